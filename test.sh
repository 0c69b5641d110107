#!/usr/bin/env bash
# Installs what is missing, builds, and tests.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"
source "$root/scripts/windows.sh"
cd "$root"

usage() {
    cat <<'END'
usage: ./test.sh [--sanitize | --threads | --windows | --fuzz SECONDS | --bench | --format | --check | --help]
                 [-- CTEST-ARGUMENT...]

Installs the packages that are missing (Debian 12; as root or through sudo), builds, and then

  (nothing)    runs every test, those of real windows on a display of their own (Xvfb)
  --sanitize   runs the tests that need no display, with address, leak and undefined behaviour checks
  --threads    runs the tests of the programmer with checks of what its threads share
  --windows    builds for 32-bit Windows and runs the tests of that under wine (as root; the first time it makes a small
               32-bit system for wine in the cache folder)
  --fuzz S     feeds every reader damaged files for S seconds each, with the same checks
  --bench      measures the release side by side with other tools and writes docs/performance.md
  --format     formats every .h and .cpp file that git knows
  --check      tells whether they are formatted and whether the shell scripts parse
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

run_all() {
    build dev
    exec xvfb-run -a -s '-screen 0 1600x1200x24 -noreset -nolisten tcp' ctest --preset dev "$@"
}

run_sanitized() {
    build sanitize
    exec ctest --preset sanitize "$@"
}

# Only the simulated programmer has threads: its clock on the wall, by which bulk reads arrive.
run_threads() {
    build threads tests_hw tests_sim tamrix_sim_programmer
    build/threads/bin/tests_hw
    build/threads/bin/tests_sim
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

windows() {
    need "${windows_packages[@]}"
    build windows tests_windows tests_com tests_block_reader tamrix_com
    build windows tests_programmer
    enter_wine_system
    cp build/windows/bin/{tests_windows,tests_com,tests_block_reader}.exe build/windows/bin/tamrix.dll \
        tests/windows/com/late_binding.vbs "$wine_system/project/"
    cp -r fuzz tests/ttl/transcripts tests/plugin/english_messages.txt "$wine_system/project/"
    cp build/windows/bin/{libtamrix_sim_programmer,bad_programmer_*}.dll "$wine_system/project/"
    cp -r data/chips "$wine_system/project/"
    echo '== the core'
    in_wine_system timeout 900 wine tests_windows.exe --gtest_brief=1
    echo '== the COM server'
    in_wine_system timeout 300 wine tests_com.exe --gtest_brief=1
    echo '== the COM server, registered and driven by a script'
    in_wine_system timeout 60 wine regsvr32 /s tamrix.dll
    in_wine_system timeout 60 wine cscript //nologo late_binding.vbs
    in_wine_system timeout 60 wine regsvr32 /s /u tamrix.dll
    windows_programmer
}

# vector_test ERROR [VARIABLE=VALUE...]: the script, with the error that it has to meet, or "none". Its last words are
# looked for, since wine's cscript ends with 0 also where a script breaks down.
vector_test() {
    local error=$1 said
    said=$(in_wine_system timeout 60 env "${@:2}" wine cscript //nologo vector_test.vbs "$error" vector_test.txt) || true
    echo "$said"
    [[ $said == *'found all as it should be.'* ]]
}

# The programmer of a host's installation, where the chip in its socket is simulated.
windows_programmer() {
    local bin=build/windows/bin unknown='no such class is registered'
    cp $bin/{tests_programmer,tests_set_device}.exe $bin/{lumbat,recording_lumbat,bad_lumbat_*}.dll \
        tests/windows/programmer/vector_test.vbs "$wine_system/project/"
    cp -r data/lib data/lib1 "$wine_system/project/"
    echo '== the programmer of an installation'
    in_wine_system timeout 300 wine tests_programmer.exe --gtest_brief=1
    in_wine_system timeout 300 wine tests_programmer.exe --model=22 --gtest_filter='installed.*' --gtest_brief=1
    echo '== the programmer of an installation, driven by a script'
    in_wine_system timeout 60 wine regsvr32 /s tamrix.dll
    vector_test "device object lumbat.devobj: $unknown"
    in_wine_system timeout 60 wine regsvr32 /s lumbat.dll
    vector_test none TAMRIX_SIMULATOR='chips chips; socket 7400; speed 1000; transcript vector_test.txt'
    vector_test 'device object lumbat.devobj: hwreset: option "model moon"' TAMRIX_SIMULATOR='model moon'
    vector_test "device object nobodys.devobj: $unknown" TAMRIX_DEVOBJ=nobodys.devobj
    in_wine_system timeout 60 wine regsvr32 /s /u lumbat.dll
    in_wine_system timeout 60 wine regsvr32 /s /u tamrix.dll
}

run_bench() {
    build release tamrix_cli bench_loads bench_logic
    exec bench/side_by_side.sh build/release
}

check() {
    local script
    sources | xargs -0r clang-format --dry-run -Werror
    git ls-files '*.sh' .ci/run | while read -r script; do bash -n "$script"; done
    say 'The formatting and the scripts are in order.'
}

mode=run_all
if (($#)) && [[ $1 != -- ]]; then
    case $1 in
    --sanitize) mode=run_sanitized ;;
    --threads) mode=run_threads ;;
    --fuzz)
        [[ ${2-} =~ ^[1-9][0-9]*$ ]] || wrong_usage '--fuzz wants a number of seconds'
        mode=fuzz seconds=$2
        shift
        ;;
    --windows) mode=windows ;;
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
