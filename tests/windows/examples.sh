#!/usr/bin/env bash
# Sourced by scripts/wine_tests.sh: the examples for Windows say what they should say. Needs to be inside the wine system.

# tells_as_expected NAME COMMAND...: runs an example there; what it says is beside this file.
tells_as_expected() {
    local name=$1
    shift
    in_wine_system timeout 60 wine "$@" | tr -d '\r' | diff "$root/tests/windows/examples/$name.txt" - ||
        { say "The example $name says something else (>) than it should (<)"; return 1; }
    say "The example $name says what it should."
}

# try_examples: those that were built. The class has to be registered.
try_examples() {
    cp "$root"/build/windows/bin/{early_binding,shared_blocks}.exe "$root/examples/windows/script_host.vbs" \
        "$wine_system/project/"
    tells_as_expected shared_blocks shared_blocks.exe
    tells_as_expected early_binding early_binding.exe
    tells_as_expected script_host cscript //nologo script_host.vbs
}
