#!/usr/bin/env bash
# Runs what preset windows built under wine, on the display of the caller. ./test.sh --windows calls it.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
source "$root/scripts/windows.sh"
cd "$root"

enter_wine_system
cp build/windows/bin/*.exe build/windows/bin/*.dll tests/windows/*/*.vbs "$wine_system/project/"
cp -r fuzz src/plugin/messages tests/ttl/transcripts tests/device/notes tests/plugin/english_messages.txt "$wine_system/project/"

echo '== the core'
in_wine_system timeout 900 wine tests_windows.exe --gtest_brief=1
echo '== the COM server'
in_wine_system timeout 300 wine tests_com.exe --gtest_brief=1

in_wine_system timeout 60 wine regsvr32 /s tamrix.dll
in_wine_system timeout 60 wine regsvr32 /s script_blocks.dll
echo '== the COM server, registered and driven by a script'
in_wine_system timeout 60 wine cscript //nologo late_binding.vbs
echo '== the dialogs, driven by a script and a person'
in_wine_system timeout 300 wine cscript //nologo load_and_save.vbs
in_wine_system timeout 60 wine regsvr32 /s /u script_blocks.dll
in_wine_system timeout 60 wine regsvr32 /s /u tamrix.dll
