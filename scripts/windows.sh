#!/usr/bin/env bash
# Sourced by test.sh and wine_tests.sh: what the Windows build needs beside packages, made once and kept in the cache:
# wxWidgets for its compiler, and a small 32-bit system with wine in it, in which it is tested. The machine itself stays as
# it is. Needs root, as making and entering such a system does.

windows_packages=(
    g++-mingw-w64-i686-posix  # the compiler for 32-bit Windows
    mingw-w64-tools           # widl, which makes the type library
    googletest                # the sources of the unit tests' library, for that compiler
    make                      # builds wxWidgets for it
    dpkg-dev                  # fetches the sources of that
    debootstrap               # makes the 32-bit system
    util-linux                # flock, mount
)

# The versions are part of the names: raise one when what is made there changes.
windows_cache=${XDG_CACHE_HOME:-$HOME/.cache}/tamrix
wine_system=$windows_cache/wine-i386-1
windows_wx=$windows_cache/wx-i686-2  # cmake/mingw-i686.cmake looks for wx-config here

# Debian has wxWidgets for Windows as source only, and without the libraries that it bundles otherwise.
wx_options=(
    --host=i686-w64-mingw32 CC=i686-w64-mingw32-gcc-posix CXX=i686-w64-mingw32-g++-posix
    'CXXFLAGS=-O2 -msse2 -mfpmath=sse -mstackrealign' --disable-shared
    --without-{libpng,libjpeg,libtiff,zlib,expat,regex,liblzma,opengl}
    --disable-{svg,webview,mediactrl,stc,aui,ribbon,propgrid,html,xrc,help,htmlhelp,richtext,artstd,arttango,protocols}
    --enable-pch --disable-{sockets,dbghelp,debugreport,secretstore,debug_flag}
    # What no dialog and no window of ours uses, and the libraries beside the base and the core, which take half the time.
    --disable-{actindicator,addremovectrl,animatectrl,bannerwindow,bmpcombobox,calendar,choicebook,collpane,colourpicker}
    --disable-{commandlinkbutton,datepick,timepick,dialupman,dirpicker,docview,editablebox,filectrl,filepicker,fontpicker}
    --disable-{fs_archive,fs_inet,fswatcher,hyperlink,infobar,ipc,joystick,listbook,mdi,mdidoc,notifmsg,odcombobox}
    --disable-{prefseditor,rearrangectrl,richmsgdlg,richtooltip,sash,sound,splash,taskbaricon,tipdlg,toolbook,treebook}
    --disable-{treelist,uiactionsim,url,webrequest,wizarddlg,arcstream,tarstream,zipstream,gif,pcx,tga,iff,pnm,creddlg}
    --disable-graphics-d2d
)

# Into the current folder. The machine's own list of sources stays as it is: apt gets a second one for this call.
fetch_wx_source() {
    local lists=$PWD/apt
    mkdir -p "$lists/parts" "$lists/lists/partial"
    local source options=(-o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$lists/parts"
        -o "Dir::State::Lists=$lists/lists" -o APT::Sandbox::User=root)
    for source in /etc/apt/sources.list.d/*.sources; do
        [[ -e $source ]] || continue
        sed -E 's/^Types:.*/Types: deb-src/' "$source" >"$lists/parts/${source##*/}"
    done
    [[ ! -e /etc/apt/sources.list ]] || sed -nE 's/^deb /deb-src /p' /etc/apt/sources.list >"$lists/parts/machine.list"
    apt-get "${options[@]}" -qq update
    apt-get "${options[@]}" -qq source --download-only wxwidgets3.2
}

make_windows_wx() {
    local making=$windows_wx.making
    say "Building wxWidgets for Windows in $windows_wx; this takes some minutes, once"
    rm -rf "$making"
    mkdir -p "$making/source"
    (
        cd "$making"
        fetch_wx_source
        tar -xf wxwidgets3.2_*.orig.tar.* -C source --strip-components=1
        cd source
        ./configure --prefix="$windows_wx" "${wx_options[@]}"
        make -j"$(nproc)"
        make install DESTDIR="$making/root"
    ) >"$windows_wx.log" 2>&1 || {
        say "That failed; the end of $windows_wx.log:"
        tail -n 20 "$windows_wx.log" >&2
        return 1
    }
    mv "$making/root$windows_wx" "$windows_wx"
    rm -rf "$making"
}

need_windows_wx() { [[ -x $windows_wx/bin/wx-config ]] || make_windows_wx; }

make_wine_system() {
    local making=$wine_system.making
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

# Making the system is mostly waiting for packages, so a build goes on meanwhile: `prepare_wine_system & ... wait`.
prepare_wine_system() (
    lock_wine_system
    [[ ! -d $wine_system ]] || return 0
    say "Making a 32-bit system with wine in $wine_system; this takes some minutes, once"
    trap '(($? == 0)) || { say "That failed; the end of $wine_system.log:" && tail -n 20 "$wine_system.log" >&2; }' EXIT
    make_wine_system >"$wine_system.log" 2>&1
)

# in_wine_system COMMAND...: runs it inside, in the folder /project, with the display of this shell.
in_wine_system() {
    chroot "$wine_system" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 WINEDEBUG=-all \
        ${DISPLAY:+DISPLAY="$DISPLAY" XAUTHORITY=/project/.Xauthority} \
        sh -c 'cd /project && exec "$@"' sh "$@" 9>&-  # wine's server outlives it and must not hold the lock
}

# One run at a time: all share the system's registry. The lock goes with the shell.
lock_wine_system() {
    mkdir -p "$windows_cache"
    exec 9>"$wine_system.lock"
    flock 9
}

enter_wine_system() {
    prepare_wine_system
    lock_wine_system
    mountpoint -q "$wine_system/proc" || mount -t proc proc "$wine_system/proc"
    rm -rf "$wine_system/project"
    mkdir "$wine_system/project"
    [[ -z ${XAUTHORITY-} ]] || cp "$XAUTHORITY" "$wine_system/project/.Xauthority"
    trap leave_wine_system EXIT
    [[ -d $wine_system/root/.wine ]] || in_wine_system wine wineboot --init >&2
}

leave_wine_system() {
    in_wine_system wineserver -k || true  # of this system only
    umount "$wine_system/proc" || true
}
