#!/usr/bin/env bash
# Takes a picture of every dialog in every language and lays those of one dialog side by side: docs/images/languages-*.png,
# which docs/languages.md shows.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

if [[ ${1-} == --help || ${1-} == -h ]]; then
    echo 'usage: scripts/contact_sheet.sh [FOLDER]   (keeps the single pictures there)'
    exit
fi

tests=$root/build/dev/bin/tests_ui

if [[ ${TAMRIX_ON_OWN_DISPLAY-} != yes ]]; then
    need "${build_packages[@]}" "${test_packages[@]}" "${picture_packages[@]}"
    build dev tests_ui
    export TAMRIX_ON_OWN_DISPLAY=yes
    exec xvfb-run -a -s '-screen 0 1600x1200x24 -noreset -nolisten tcp' "$0" "$@"
fi

work=$(mktemp -d)
window_manager=
clean_up() {
    [[ -z $window_manager ]] || kill "$window_manager" 2>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT
export HOME=$work XDG_CONFIG_HOME=$work/config XDG_CACHE_HOME=$work/cache XDG_DATA_HOME=$work/data LC_ALL=C.UTF-8
export GDK_BACKEND=x11 GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1

mkdir -p "$XDG_CONFIG_HOME/gtk-3.0"  # nothing blinks, nothing moves
printf '[Settings]\ngtk-cursor-blink=0\ngtk-enable-animations=0\n' >"$XDG_CONFIG_HOME/gtk-3.0/settings.ini"

openbox --sm-disable >/dev/null 2>&1 &
window_manager=$!
sleep 1
xdotool mousemove 1599 1199
export TAMRIX_PICTURES=${1:-$work/pictures}
mkdir -p "$TAMRIX_PICTURES"
rm -f "$TAMRIX_PICTURES"/*-*.png
"$tests" --gtest_brief=1 --gtest_filter='*every_dialog*' >&2

# The first or second part of the pictures' names, each once, in the order in which the tests took them.
parts_of_names() {
    find "$TAMRIX_PICTURES" -name '*.png' -printf '%T@ %f\n' | sort -n | sed 's/^[^ ]* //; s/\.png$//' |
        cut -d- -f "$1" | awk '!seen[$0]++'
}
mapfile -t languages < <(parts_of_names 1)
mapfile -t dialogs < <(parts_of_names 2)

images=$root/docs/images
rm -f "$images"/languages-*.png
for dialog in "${dialogs[@]}"; do
    parts=()
    for language in "${languages[@]}"; do
        parts+=(-label "${language//_/ }" "$TAMRIX_PICTURES/$language-$dialog.png")
    done
    sheet=$images/languages-${dialog//_/-}.png
    montage -font DejaVu-Sans -pointsize 14 -background '#d0d4da' "${parts[@]}" -tile 3x -geometry '+12+8' miff:- |
        convert - +dither -colors 64 -strip -define png:compression-level=9 "PNG8:$sheet"
    say "${sheet#"$root/"}, $(($(stat -c %s "$sheet") / 1024)) kB"
done
