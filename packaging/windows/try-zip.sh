#!/usr/bin/env bash
# Sourced by test.sh and scripts/wine_tests.sh: the package for Windows works where it is unpacked. Needs to be inside the wine system.

unzip_packages=(
    unzip  # unpacks the package for Windows
)

expected_files() {
    cat <<'END'
LICENSE.txt
include/tamrix.h
include/tamrix.idl
include/tamrix/blocks.h
lib/test.lib
lib1/test190.lib
readme.txt
samples/early_binding.cpp
samples/script_host.vbs
samples/shared_blocks.cpp
tamrix.dll
tamrix.tlb
END
}

# The folder has a blank and letters beyond ASCII in its name, as folders of users do.
unpacked='/project/Größe 1'

# in_package COMMAND...: runs it in the unpacked folder under wine.
in_package() {
    in_wine_system sh -c 'cd "$1" && shift && exec timeout 60 wine "$@"' sh "$unpacked/$package" "$@" | tr -d '\r'
}

# same_as FILE WHAT: compares what comes in with a file.
same_as() { diff "$1" - || { say "$2 of the package says something else (>) than it should (<)"; return 1; }; }

registered_for() {
    in_wine_system wine reg query "$1\\Software\\Classes\\tamrix.Clstamrix\\Clsid" >/dev/null
}

# The samples are built with nothing but what is in the package.
build_samples() {
    local folder=$wine_system$unpacked/$package name
    for name in early_binding shared_blocks; do
        i686-w64-mingw32-g++-posix -std=c++20 -I "$folder/include" "$folder/samples/$name.cpp" \
            -o "$folder/samples/$name.exe" -static -lole32 -loleaut32 -luuid
    done
}

try_package() {
    local expected=$root/tests/windows/examples
    in_package regsvr32 /s tamrix.dll
    in_package cscript //nologo 'samples\script_host.vbs' | same_as "$expected/script_host.txt" 'The script'
    in_package 'samples\early_binding.exe' | same_as "$expected/early_binding.txt" 'The host in C++'
    in_package 'samples\shared_blocks.exe' | same_as "$expected/shared_blocks.txt" 'The host of the blocks'
    in_package cscript //nologo 'Z:\project\packaged_library.vbs' | same_as "$expected/packaged_library.txt" 'The search'
    in_package regsvr32 /s /u tamrix.dll
    ! registered_for HKLM || { say 'The class is registered still'; return 1; }
}

try_package_of_user() {
    in_package regsvr32 /s /n /i:user tamrix.dll
    registered_for HKCU && ! registered_for HKLM || { say 'The class is not registered for the user alone'; return 1; }
    in_package regsvr32 /s /u /n /i:user tamrix.dll
    ! registered_for HKCU || { say 'The class is registered for the user still'; return 1; }
}

try_zip() {
    local archive package
    archive=$("$root/packaging/windows/make-zip.sh")
    package=$(basename "$archive" .zip)
    unzip -q "$archive" -d "$wine_system$unpacked"
    (cd "$wine_system$unpacked/$package" && find . -type f | sed 's:^\./::' | LC_ALL=C sort) | diff <(expected_files) -
    ! grep -v $'\r$' "$wine_system$unpacked/$package/readme.txt" || { say 'Lines of readme.txt end in another way'; return 1; }
    cp "$root/tests/windows/examples/packaged_library.vbs" "$wine_system/project/"
    build_samples
    try_package
    try_package_of_user
    say "The package $package works where it is unpacked."
}
