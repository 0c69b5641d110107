#!/usr/bin/env bash
# Installs missing packages, builds, and tests.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"
source "$root/scripts/windows.sh"
source "$root/packaging/windows/try-zip.sh"
source "$root/scripts/displays.sh"
cd "$root"

usage() {
    cat <<'END'
usage: ./test.sh [--sanitize | --threads | --odr | --windows | --fuzz SECONDS | --bench | --format | --check | --help]
                 [-- CTEST-ARGUMENT...]

Installs missing packages (Debian 12; as root or through sudo), builds, and then

  (no option)  runs every test; tests of real windows get displays of their own (Xvfb)
  --sanitize   runs the tests that need no display, with address, leak and undefined behaviour checks
  --threads    runs the tests of what has threads, with the thread sanitizer
  --odr        compiles everything and reports names that two files define differently
  --windows    builds for 32-bit Windows, runs the tests under wine, and tries the package (as root; the first time it
               also makes a small 32-bit system for wine and builds wxWidgets, in the cache folder: some minutes)
  --fuzz S     feeds every reader damaged files for S seconds each, with the checks of --sanitize
  --bench      measures the release beside other tools and writes docs/performance.md
  --format     formats every .h and .cpp file that git knows
  --check      checks the formatting, which folders include which, the scripts, and that the transcripts of the
               self-tests and of the instruments are what their models write
  --help       shows this

Arguments after -- go to ctest: ./test.sh -- -R readfile
END
}

wrong_usage() {
    say "./test.sh: $1"
    usage >&2
    exit 2
}

sources() { git ls-files -z '*.h' '*.cpp'; }

# A display on a busy machine may lose a key, and the test then waits for its end. One that waits again fails.
run_all() {
    build dev
    start_displays 4
    ctest --preset dev --repeat after-timeout:2 "$@"
}

run_sanitized() {
    build sanitize
    exec ctest --preset sanitize "$@"
}

# Only the simulated programmer has threads, its clock on the wall, by which bulk reads arrive, and the reading and writing
# of long files.
run_threads() {
    build threads tests_files tests_programmer tests_channel tests_sim tests_instruments tamrix_sim_programmer
    build/threads/bin/tests_files --gtest_filter='read_ahead*:write_later*'
    build/threads/bin/tests_programmer
    build/threads/bin/tests_channel
    build/threads/bin/tests_instruments --gtest_filter='*wall_clock*'
    build/threads/bin/tests_sim
}

# objects_of PRESET FOLDER: what is compiled in that folder of the build, a path a line.
objects_of() { ninja -C "build/$1" -t targets all | sed -n "s|^\(${2-}.*\.o\): CXX_COMPILER__.*|build/$1/\1|p"; }

# Two types of one name make a program without defined behaviour, and an ordinary link does not notice. One with
# link-time optimisation compares them; here it only merges, the objects of all programs, libraries and tests at once: a
# program takes out of a static library no more than it needs, and what meets in none today may meet tomorrow. The release
# is compiled for that anyway. The tests get the data for it beside their code, from now on: a run of the tests finds them
# compiled.
run_odr() {
    local tests objects
    build release
    grep -qs '^TAMRIX_COMPARED_TESTS:BOOL=ON' build/dev/CMakeCache.txt ||
        cmake -S . --preset dev -DTAMRIX_COMPARED_TESTS=ON >&2
    build dev build.ninja # knows new files from then on
    mapfile -t tests < <(objects_of dev tests/)
    build dev "${tests[@]#build/dev/}"
    mapfile -t objects < <(objects_of release)
    objects+=("${tests[@]}")
    g++ -r -flto=auto -flinker-output=rel -Werror=odr -Werror=lto-type-mismatch -Wl,-z,muldefs "${objects[@]}" \
        -o build/dev/everything.o
    say "The files of ${#objects[@]} objects take each name for the same thing."
}

# What a run finds goes to fuzz/found/, which the ordinary tests replay from then on.
fuzz() {
    local seconds=$1 target reader
    need "${fuzz_packages[@]}"
    build fuzz
    for target in build/fuzz/bin/fuzz_*; do
        reader=${target##*/fuzz_}
        mkdir -p "build/fuzz/corpus/$reader" "fuzz/found/$reader"
        echo "== $reader, $seconds s"
        "$target" -max_total_time="$seconds" -max_len=4096 -print_final_stats=1 -artifact_prefix="fuzz/found/$reader/" \
            "build/fuzz/corpus/$reader" "fuzz/seeds/$reader" 2>&1 | grep -E 'number_of_executed_units|ERROR|SUMMARY|Test unit'
        rmdir --ignore-fail-on-non-empty "fuzz/found/$reader" fuzz/found
    done
}

run_windows() {
    need "${windows_packages[@]}" "${unzip_packages[@]}"
    prepare_wine_system &
    need_windows_wx
    build windows
    wait $!
    exec xvfb-run -a -s '-screen 0 1280x1024x24 -noreset -nolisten tcp' scripts/wine_tests.sh
}

run_bench() {
    build release tamrix_cli bench_loads bench_logic bench_instruments bench_editing
    exec bench/side_by_side.sh build/release
}

check() {
    local script
    sources | xargs -0r clang-format --dry-run -Werror
    git ls-files '*.sh' .ci/run | while read -r script; do bash -n "$script"; done
    need "${mutation_packages[@]}"
    python3 -B scripts/check_structure.py
    python3 -B -m unittest discover -q -s scripts -p '*_test.py'
    python3 -B tests/selftest/transcripts/model.py --check
    python3 -B tests/instruments/transcripts/model.py --check
    say 'The formatting, the includes and the scripts are in order.'
}

mode=run_all
if (($#)) && [[ $1 != -- ]]; then
    case $1 in
    --sanitize) mode=run_sanitized ;;
    --threads) mode=run_threads ;;
    --odr) mode=run_odr ;;
    --fuzz)
        [[ ${2-} =~ ^[1-9][0-9]*$ ]] || wrong_usage '--fuzz wants a number of seconds'
        mode=fuzz seconds=$2
        shift
        ;;
    --windows) mode=run_windows ;;
    --bench) mode=run_bench ;;
    --format) mode=format ;;
    --check) mode=check ;;
    --help | -h) usage && exit ;;
    *) wrong_usage "unknown option $1" ;;
    esac
    shift
fi
if (($#)); then
    [[ $1 == -- ]] || wrong_usage "unexpected argument $1 (arguments for ctest stand after --)"
    [[ $mode == run_all || $mode == run_sanitized ]] || wrong_usage "only a run of the tests takes arguments for ctest"
    shift
fi

need "${build_packages[@]}" "${test_packages[@]}"
case $mode in
format) sources | xargs -0r clang-format -i ;;
fuzz) fuzz "$seconds" ;;
*) "$mode" "$@" ;;
esac
