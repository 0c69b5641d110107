#!/usr/bin/env bash
# Sourced by run.sh and test.sh: installs the packages that are missing, configures a preset once and builds it.
# Everything it says goes to standard error; standard output belongs to the program that is run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

build_packages=(
    g++                # the compiler
    cmake              # configures the build
    ninja-build        # runs it
    libwxgtk3.2-dev    # the dialogs and the workbench
    libcli11-dev       # the arguments of the command line
    libzip-dev         # the session files of captures
    fonts-dejavu-core  # a proportional and a fixed-width font for the windows
    fonts-wqy-microhei  # Chinese and Korean letters for them, in 2 MB
    librsvg2-common    # the symbols in the windows (check marks, bullets, icons)
)
test_packages=(
    libgtest-dev      # the unit tests
    libgmock-dev      # their matchers
    clang-format      # the formatting
    git               # lists the files to format
    srecord           # writes and reads HEX files as a peer
    binutils          # objcopy, the other peer
    mame-tools        # jedutil, the peer for fuse files
    sigrok-cli        # the peer for captures
    gtkwave           # vcd2fst and fst2vcd, more peers for captures
    xvfb              # the display that tests of real windows run on
    xauth             # xvfb-run needs it
    xdotool           # the keys and the mouse in those tests
    imagemagick       # takes their screenshots
    poppler-utils     # looks at the pages that they print
)

# For the pictures of the documentation.
picture_packages=(
    openbox  # gives the windows their title bars
)

# For changes of the sources that the tests have to notice.
mutation_packages=(
    python3  # the program that makes and tries them
)

fuzz_packages=(
    clang               # the compiler that has libFuzzer
    libclang-rt-14-dev  # libFuzzer itself, and its checks
)

say() { echo "$@" >&2; }

# Those of the named packages that are not installed, one a line.
missing() {
    comm -23 <(printf '%s\n' "$@" | sort) \
        <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | sort)
}

apt_install() {
    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || return 1
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get -qq update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -qq -y --no-install-recommends -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 install "$@"
}

# Installs those of the named packages that are missing. Does not call apt if none is.
need() {
    local packages
    if ! command -v dpkg-query >/dev/null; then
        say "This is no Debian system; going on as if it had the like of: $*"
        return
    fi
    mapfile -t packages < <(missing "$@")
    ((${#packages[@]})) || return 0
    say "Installing ${packages[*]} and what they need; this takes a minute or more"
    if ! apt_install "${packages[@]}" >/dev/null; then
        say "That failed. As root, run: apt-get update && apt-get install ${packages[*]}"
        exit 1
    fi
}

# build PRESET [TARGET...]: configures if that was not done since the presets changed (ninja sees to the rest), and builds.
build() {
    local preset=$1 folder=$root/build/$1
    shift
    [[ $folder/build.ninja -nt $root/CMakePresets.json ]] || cmake -S "$root" --preset "$preset" >&2
    cmake --build "$folder" ${1:+--target "$@"} >&2
    say "Preset $preset is built, $SECONDS s after the start"
}
