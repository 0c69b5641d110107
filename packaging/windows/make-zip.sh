#!/usr/bin/env bash
# Builds tamrix.dll and packs it with all that a developer of a host needs.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/setup.sh"
source "$root/scripts/windows.sh"

usage() {
    cat <<'END'
usage: packaging/windows/make-zip.sh [--help]

Installs missing packages (Debian 12; as root or through sudo), builds the preset windows, writes
build/tamrix-windows-VERSION.zip and prints its name.

`./test.sh --windows` writes it too, unpacks it under wine, registers the library from there and runs the samples.
END
}

zip_packages=(
    zip  # packs the package as Windows unpacks it without help
)

version() { sed -n 's/^project(tamrix VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"; }

# as_windows_text FILE...: to standard output, with the line ends that every editor of Windows knows.
as_windows_text() { sed 's/\r*$/\r/' "$@"; }

# fill FOLDER: everything as it will be on the user's disk. Folders of the vector libraries are those that the plug-in
# looks for below the path that it is given.
fill() {
    local folder=$1 built=$root/build/windows file
    mkdir -p "$folder"/{include/tamrix,lib,lib1,samples}
    cp "$built/bin/tamrix.dll" "$built/src/com/tamrix.tlb" "$folder/"
    cp "$root/data/lib/test.lib" "$folder/lib/"
    cp "$root/data/lib1/test190.lib" "$folder/lib1/"
    as_windows_text "$built/src/com/include/tamrix.h" >"$folder/include/tamrix.h"
    as_windows_text "$root/include/tamrix/blocks.h" >"$folder/include/tamrix/blocks.h"
    # Compilers on Windows have the platform's own definitions.
    sed 's/"com_types.idl"/"oaidl.idl"/' "$root/src/com/tamrix.idl" | as_windows_text >"$folder/include/tamrix.idl"
    for file in "$root"/examples/windows/*.{vbs,cpp}; do
        as_windows_text "$file" >"$folder/samples/${file##*/}"
    done
    sed "s/@VERSION@/$(version)/" "$root/packaging/windows/readme.txt" | as_windows_text >"$folder/readme.txt"
    as_windows_text "$root/LICENSE" >"$folder/LICENSE.txt"
}

make_zip() {
    local name=tamrix-windows-$(version) work=$root/build/package
    rm -rf "$work" "$root/build/$name.zip"
    fill "$work/$name"
    (cd "$work" && find "$name" -type f | LC_ALL=C sort | zip -q -X -@ "$root/build/$name.zip")
    echo "$root/build/$name.zip"
}

case ${1-} in
--help | -h) usage && exit ;;
'') ;;
*) say "make-zip.sh: unknown option $1" && usage >&2 && exit 2 ;;
esac
need "${build_packages[@]}" "${windows_packages[@]}" "${zip_packages[@]}"
need_windows_wx
build windows tamrix_com tamrix_com_header_file
make_zip
