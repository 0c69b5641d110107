#!/usr/bin/env bash
# Takes the pictures of the documentation: starts the workbench on a display of its own, works with it by keyboard as a
# person would, and writes docs/images/*.png.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

if [[ ${1-} == --help || ${1-} == -h ]]; then
    echo 'usage: scripts/screenshots.sh [FOLDER-OF-THE-PROGRAMS]   (default: build/release/bin, which it builds)'
    exit
fi

if [[ ${TAMRIX_ON_OWN_DISPLAY-} != yes ]]; then
    need "${build_packages[@]}" "${test_packages[@]}" "${picture_packages[@]}"
    programs=${1:+$(realpath "$1")}
    if [[ -z $programs ]]; then
        build release tamrix_workbench tamrix_plugin tamrix_sim_programmer
        programs=$root/build/release/bin
    fi
    export TAMRIX_ON_OWN_DISPLAY=yes
    exec xvfb-run -a -s '-screen 0 1280x900x24 -noreset -nolisten tcp' "$0" "$programs"
fi

programs=$1
images=$root/docs/images
work=/tmp/tamrix-demo  # is seen in the pictures
mkdir "$work"
started=()
clean_up() {
    ((${#started[@]} == 0)) || kill "${started[@]}" 2>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT
export HOME=$work XDG_CONFIG_HOME=$work/config XDG_CACHE_HOME=$work/cache XDG_DATA_HOME=$work/data
export GDK_BACKEND=x11 GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1
mkdir -p "$images"

# The window whose title matches; waits for it. A search breaks off where another window goes away under it.
window() {
    local id='' tries
    for ((tries = 0; tries < 100; tries++)); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1) || true
        [[ -z $id ]] || break
        sleep 0.1
    done
    [[ -n $id ]] || { say "No window: $1" && exit 1; }
    echo "$id"
}

press() {
    xdotool key --delay 60 "$@"
    sleep 0.4
}

# picture NAME TITLE: the window with its frame.
picture() {
    local id
    id=$(window "$2")
    xdotool mousemove 1279 899
    sleep 0.6
    import -silent -frame -window "$id" -strip -define png:compression-level=9 "$images/$1.png"
    say "docs/images/$1.png"
}

# Types a name into the file dialog with that title; the dialog takes its time to look for it.
choose_file() {
    window "$1" >/dev/null
    sleep 1
    xdotool type --delay 20 "$work/$2"
    sleep 1
    press Return
}

# A program for a small microcontroller: a jump, a text, code, a table.
demo_image() {
    {
        printf '\x02\x00\x80'
        head -c 45 /dev/zero | tr '\0' '\377'
        printf 'tamrix demo 1.0\0ready\r\n\0no device in the socket\r\n\0'
        head -c 18 /dev/zero | tr '\0' '\377'
        for ((i = 0; i < 40; i++)); do
            printf '\x90\x00\x30\xE4\x93\x60\x0A\xF5\x99\x30\x99\xFD\xC2\x99\xA3\x80\xF0\x22'
            printf "\\x$(printf %02x $((i * 6)))"
        done
    } >"$1"
}

demo_image "$work/demo.bin"
objcopy -I binary -O ihex "$work/demo.bin" "$work/demo.hex"
sed 's/^:100020.*$/:100020000102030405060708090A0B0C0D0E0FZZ00/' "$work/demo.hex" >"$work/damaged.hex"
cd "$work"

openbox --sm-disable >/dev/null 2>&1 &
started+=($!)
sleep 1
"$programs/tamrix-workbench" --device AT89C51 demo.hex &
started+=($!)

picture load-dialog 'Load A File To Buffer'
press Return
window '^demo.hex - tamrix workbench' >/dev/null
picture workbench '^demo.hex - tamrix workbench'

press ctrl+shift+s
window '^Save Buffer$' >/dev/null
sleep 0.5
press ctrl+a
choose_file '^Save Buffer$' copy.hex
picture save-dialog 'Save Buffer To A File'
press Escape

press F4
picture device-values '^Values of AT89C51'
press Escape

press ctrl+m
picture parameters '^Modify Algorithm Parameters'
press Escape

# Test a logic IC: a sound 7400, then one with a broken pin.
press ctrl+t
xdotool type --delay 20 7400
press Return
press F6
window '^Auto Find Device Result' >/dev/null
picture auto-find '^Auto Find Device Result'
press Return
press ctrl+t Return Tab Down Down o
picture socket '^demo.hex - tamrix workbench'

press F5
window '^TTL & CMOS Test' >/dev/null
sleep 0.5
xdotool type --delay 20 7400
sleep 0.5
picture logic-test '^TTL & CMOS Test'
press Tab Tab Return
window '^Warning!' >/dev/null
picture failed-test '^Warning!'
press alt+a
press Escape

press alt+t e
window '^Edit Pattern' >/dev/null
sleep 0.5
xdotool type --delay 20 7400
press Tab Tab Tab Tab Return
picture vector-editor '^7400 Test Vector Edit'
press Escape
press Escape
press ctrl+d

press ctrl+o
choose_file '^Load File$' damaged.hex
window '^Damaged File$' >/dev/null
press alt+y
window 'Load A File To Buffer' >/dev/null
sleep 0.5
press Return
picture failed-load 'tamrix workbench$'

press ctrl+d
xdotool type --delay 20 PIC16F877A
press Return
picture device-note '^Note!'
press Return

# The programmer tests itself, with a dead driver.
press F7
xdotool type --delay 20 'vcc driver 7 dead'
press Return
press alt+t s
window '^Self_test' >/dev/null
sleep 0.5
press Return
sleep 5
picture self-test '^Self_test'
press Return
sleep 3
press Escape
window 'tamrix workbench$' >/dev/null
picture last-self-test 'tamrix workbench$'
press alt+v

# Signals at the pins, and the instruments that look at them.
press F8
for signal in 'P21 P22 counter 20000' 'P25 P26 i2c 20000 write 50 01 02 every 0.003' 'P27 uart 19200 "tamrix" every 0.005'; do
    xdotool type --delay 20 "$signal"
    press Return
done
press alt+g Down  # to the meter
picture signals 'tamrix workbench$'
# instrument LETTER TITLE: opens it from the menu, over the pin map.
instrument() {
    press alt+o "$1"
    window Pin >/dev/null
    sleep 0.5
    press Return
    window "$2" >/dev/null
    sleep 0.5
}
instrument s '^Signal Generator'
xdotool type --delay 20 12500
press Return
picture signal-generator '^Signal Generator'
press Escape
instrument l '^Logic Analyzer'
press minus minus minus minus space
sleep 3
picture logic-analyzer '^Logic Analyzer'
press Escape
instrument f '^Frequency Meter'
press Return
sleep 3
picture frequency-meter '^Frequency Meter'
press Escape
press ctrl+q
