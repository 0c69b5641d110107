#!/usr/bin/env bash
# Runs what preset windows built under wine, on the display of the caller. ./test.sh --windows calls it.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
source "$root/scripts/windows.sh"
source "$root/tests/windows/examples.sh"
source "$root/packaging/windows/try-zip.sh"
cd "$root"

register() { in_wine_system timeout 60 wine regsvr32 /s "$@"; }

# script NAME.vbs [ARGUMENT...], with the environment variables in `settings`. Its last words are looked for, since wine's
# cscript ends with 0 also where a script breaks down.
settings=()
script() {
    local said
    said=$(in_wine_system timeout 600 env "${settings[@]}" wine cscript //nologo "$@") || true
    echo "$said"
    [[ $said == *'found all as it should be.'* ]] || { cat "$wine_system/project/person.log" 2>/dev/null; return 1; }
}

# vector_test ERROR [VARIABLE=VALUE...]: the script, with the error that it has to meet, or "none".
vector_test() {
    local settings=("${@:2}")
    script vector_test.vbs "$1" vector_test.txt
}

enter_wine_system
cp build/windows/bin/*.exe build/windows/bin/*.dll build/windows/src/com/tamrix.tlb tests/windows/*/*.vbs \
    "$wine_system/project/"
cp -r src/messages tests/ttl/transcripts tests/device/notes docs/models.md tests/messages/english_messages.txt \
    data/{chips,lib,lib1} "$wine_system/project/"
cp -r tests/selftest/transcripts "$wine_system/project/selftest_transcripts"
cp -r tests/instruments/transcripts "$wine_system/project/instrument_transcripts"

# They mostly wait for wine's server, so all three go on together.
core_half() {
    in_wine_system env GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX="$1" timeout 1800 wine tests_windows.exe --gtest_brief=1
}
echo '== the core and the COM server'
logs=("$wine_system/project/first_half.log" "$wine_system/project/second_half.log")
core_half 0 >"${logs[0]}" 2>&1 &
halves=($!)
core_half 1 >"${logs[1]}" 2>&1 &
halves+=($!)
in_wine_system timeout 900 wine tests_com.exe --gtest_brief=1 --gtest_filter='-registered.*'
for half in 0 1; do
    wait "${halves[half]}" || { cat "${logs[half]}"; exit 1; }
    tail -n 2 "${logs[half]}"
done
# The system keeps a library that it loaded for a thread without an apartment until the process ends.
in_wine_system timeout 900 wine tests_com.exe --gtest_brief=1 --gtest_filter='registered.*'
echo '== the programmer of an installation'
in_wine_system timeout 900 wine tests_programmer.exe --gtest_brief=1
in_wine_system timeout 900 wine tests_programmer.exe --model=22 --gtest_filter='installed.*' --gtest_brief=1

register tamrix.dll
register script_blocks.dll
echo '== the COM server, registered and driven by a script'
script late_binding.vbs
echo '== the dialogs, driven by a script and a person'
script load_and_save.vbs
echo '== the programmer of an installation, driven by a script'
unknown='no such class is registered'
vector_test "device object lumbat.devobj: $unknown"
register lumbat.dll
vector_test none TAMRIX_SIMULATOR='chips chips; socket 7400; speed 1000; transcript vector_test.txt'
vector_test 'device object lumbat.devobj: hwreset: option "model moon"' TAMRIX_SIMULATOR='model moon'
vector_test "device object nobodys.devobj: $unknown" TAMRIX_DEVOBJ=nobodys.devobj
echo '== the self-test of that programmer, driven by a script and a person'
settings=(TAMRIX_SIMULATOR='model 40; speed 1000')
script self_test.vbs sound
settings=(TAMRIX_SIMULATOR='model 40; speed 1000; fault vcc driver 7 dead; fault bad ram bank 3')
script self_test.vbs broken
echo '== its instruments, driven by a script and a person'
settings=(TAMRIX_SIMULATOR='model 40; signal P21 square 1000; signal P22 low; signal lead 23 P23')
script instruments.vbs
settings=()
register /u lumbat.dll
register /u script_blocks.dll
echo '== the examples'
try_examples
register /u tamrix.dll
echo '== the package'
try_zip
