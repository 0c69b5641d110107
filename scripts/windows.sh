#!/usr/bin/env bash
# Sourced by test.sh: a small 32-bit system with wine in it, made once and kept in the cache, in which the Windows build
# is tested. The machine itself stays as it is. Needs root, as making and entering such a system does.

windows_packages=(
    g++-mingw-w64-i686-posix  # the compiler for 32-bit Windows
    mingw-w64-tools           # widl, which makes the type library
    googletest                # the sources of the unit tests' library, for that compiler
    debootstrap               # makes the 32-bit system
    util-linux                # flock, mount
)

# The version is part of the name: raise it when what is made here changes.
wine_system=${XDG_CACHE_HOME:-$HOME/.cache}/tamrix/wine-i386-1

make_wine_system() {
    local making=$wine_system.making
    say "Making a 32-bit system with wine in $wine_system; this takes some minutes, once"
    mkdir -p "$(dirname "$wine_system")"
    ! mountpoint -q "$making/proc" || umount "$making/proc"  # left by a run that was interrupted
    rm -rf --one-file-system "$making"
    debootstrap --arch=i386 --variant=minbase bookworm "$making" >&2
    chroot "$making" apt-get -qq update >&2
    chroot "$making" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -y --no-install-recommends -o Dpkg::Use-Pty=0 install wine wine32 >&2
    chroot "$making" apt-get clean
    ! mountpoint -q "$making/proc" || umount "$making/proc"
    mv "$making" "$wine_system"
}

# in_wine_system COMMAND...: runs it inside, in the folder /project.
in_wine_system() {
    chroot "$wine_system" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 WINEDEBUG=-all \
        sh -c 'cd /project && exec "$@"' sh "$@" 9>&-  # wine's server outlives it and must not hold the lock
}

# One run at a time: all share the system's registry. The lock goes with the shell.
enter_wine_system() {
    mkdir -p "$(dirname "$wine_system")"
    exec 9>"$wine_system.lock"
    flock 9
    [[ -d $wine_system ]] || make_wine_system
    mountpoint -q "$wine_system/proc" || mount -t proc proc "$wine_system/proc"
    rm -rf "$wine_system/project"
    mkdir "$wine_system/project"
    trap leave_wine_system EXIT
    [[ -d $wine_system/root/.wine ]] || in_wine_system wine wineboot --init >&2
}

leave_wine_system() {
    in_wine_system wineserver -k || true  # of this system only
    umount "$wine_system/proc" || true
}
