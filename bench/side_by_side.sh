#!/usr/bin/env bash
# Measures the command side by side with other tools, in turns in one run, and writes docs/performance.md.
set -euo pipefail

if (($# != 1)) || [[ ! -x $1/bin/tamrix || ! -x $1/bin/bench_loads || ! -x $1/bin/bench_logic || ! -x $1/bin/bench_instruments ||
    ! -x $1/bin/bench_editing ]]; then
    echo "usage: bench/side_by_side.sh BUILD_FOLDER (of a build of everything, best the release)" >&2
    exit 2
fi
bin=$(cd "$1/bin" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
report=$here/../docs/performance.md
rounds=${TAMRIX_BENCH_ROUNDS:-7}
size_mib=64

# Where files usually are; TAMRIX_BENCH_FOLDER=/dev/shm takes the disk and its file system out of the figures.
base=${TAMRIX_BENCH_FOLDER:-${TMPDIR:-/tmp}}
folder=$(mktemp -d "$base/tamrix-bench-XXXXXX")
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# time_of NAME OUTPUT COMMAND...: runs a command that makes OUTPUT anew; notes its milliseconds from start to end as NAME,
# and those that a processor worked for it as NAME_cpu.
time_of() {
    local name=$1 output=$2 TIMEFORMAT='%R %U %S'
    shift 2
    rm -f "$output"
    sync -f . # what was written before costs this one nothing
    { time "$@" >/dev/null 2>&3; } 3>&2 2>one_time
    awk -v name="$name" '{ print name, 1000 * $1; print name "_cpu", 1000 * ($2 + $3) }' one_time >>times
}

median() {
    local values
    mapfile -t values < <(awk -v name="$1" '$1 == name { print $2 }' times | sort -n)
    echo "${values[${#values[@]} / 2]}"
}
ms() { printf '%.0f' "$(median "$1")"; }
ratio() { awk -v a="$(median "$1")" -v b="$(median "$2")" 'BEGIN { printf "%.2f", a / b }'; }
# met VALUE LIMIT: "met" where VALUE is at most LIMIT.
met() { awk -v a="$1" -v b="$2" 'BEGIN { print a <= b ? "met" : "**missed**" }'; }
mib_per_second() { awk -v t="$(median "$1")" -v s="$2" 'BEGIN { printf "%.0f", s * 1.048576 * 1000 / t }'; }

same_number() { [[ $(median "$1") == "$(median "$2")" ]] || { echo "$1 and $2 differ" >&2 && exit 1; }; }
same() { cmp -s "$1" "$2" || { echo "$1 and $2 differ: $3" >&2 && exit 1; }; }

echo "Making $size_mib MiB of random bytes" >&2
head -c $((size_mib << 20)) /dev/urandom >in.bin
objcopy -I binary -O ihex in.bin in.hex
objcopy -I binary -O srec in.bin in.s19
head -c 65536 in.bin >small.bin
srec_cat small.bin -binary -execution-start-address=0 -o small.tek -tektronix
awk 'BEGIN {
    srand(1); printf "\002A million fuses*\r\nQP28*\r\nQF1000000*\r\nF0*\r\n"
    for (row = 0; row < 1000000; row += 32) {
        printf "L%07d ", row
        for (i = 0; i < 32; ++i) { fuse = rand() < 0.5; printf "%d", fuse; sum += fuse * 2 ^ (i % 8) }
        printf "*\r\n"
    }
    printf "C%04X*\r\n\0030000", sum % 65536
}' </dev/null >million.jed

start_many() { for ((i = 0; i < 50; ++i)); do "$@" --version; done; }
fifty_times() { for ((i = 0; i < 50; ++i)); do "$@"; done; }

# text_turns NAME EXTENSION BFD_NAME SREC_CAT_NAME: every tool reads and writes the large file once.
text_turns() {
    local name=$1 in=in.$2 out=out.$2 bfd=$3 srec=$4
    time_of "read_${name}_cp" "$out" cp "$in" "$out"
    time_of "read_${name}_tamrix" out.bin "$bin/tamrix" convert "$in" out.bin
    same in.bin out.bin "tamrix read $in"
    time_of "read_${name}_objcopy" out.bin objcopy -I "$bfd" -O binary "$in" out.bin
    same in.bin out.bin "objcopy read $in"
    time_of "read_${name}_srec_cat" out.bin srec_cat "$in" "-$srec" -o out.bin -binary
    same in.bin out.bin "srec_cat read $in"
    time_of "write_${name}_objcopy" "$out" objcopy -I binary -O "$bfd" in.bin "$out"
    time_of "write_${name}_srec_cat" "$out" srec_cat in.bin -binary -o "$out" "-$srec"
    time_of "write_${name}_tamrix" "$out" "$bin/tamrix" convert in.bin "$out"
    objcopy -I "$bfd" -O binary "$out" out.bin
    same in.bin out.bin "objcopy read what tamrix wrote"
    rm -f copy
    time_of "write_${name}_cp" copy cp "$out" copy
    rm -f copy "$out"
}

for ((round = 1; round <= rounds; ++round)); do
    echo "Round $round of $rounds" >&2
    text_turns intel hex ihex intel
    text_turns motorola s19 srec motorola
    time_of read_tek_tamrix out.bin fifty_times "$bin/tamrix" convert small.tek out.bin
    same small.bin out.bin "tamrix read small.tek"
    time_of read_tek_srec_cat out.bin fifty_times srec_cat small.tek -tektronix -o out.bin -binary
    time_of write_tek_tamrix out.tek fifty_times "$bin/tamrix" convert small.bin out.tek
    time_of write_tek_srec_cat out.tek fifty_times srec_cat small.bin -binary -o out.tek -tektronix
    time_of jedec_command none "$bin/tamrix" jedec million.jed
    time_of image_cp copy.bin cp in.bin copy.bin
    time_of image_tamrix out.bin "$bin/tamrix" convert in.bin out.bin
    time_of start_tamrix none start_many "$bin/tamrix"
    time_of start_objcopy none start_many objcopy
    time_of start_srec_cat none start_many srec_cat
    "$bin/bench_loads" in.bin in.hex in.s19 million.jed "$folder/" >>times
    "$bin/bench_logic" "$folder/" >>times
    "$bin/bench_instruments" >>times
    GDK_BACKEND=x11 xvfb-run -a -s '-screen 0 1280x1024x24' "$bin/bench_editing" >>times
    python3 -B "$here/slow_screens.py" >>times
    same_number thousand_screens_lines slow_screens_lines
    rm -f tmpbuf.bin copy.bin
done

strip -o stripped "$bin/tamrix"
per_start() { awk -v t="$(median "$1")" 'BEGIN { printf "%.1f", t / 50 }'; }
row() { echo "| $1 | $(ms "$2") ms | $(ratio "$2" "$3") |"; }
tool_row() { echo "| $1 | $(ms "$2") ms | $(ratio "$2" "$3") | $(ms "$2_cpu") ms | $(ratio "$2_cpu" "$3_cpu") |"; }
hex_mib() { awk -v b="$(stat -c %s "$1")" 'BEGIN { printf "%.0f", b / 1048576 }'; }

# text_tables NAME TITLE EXTENSION BFD_NAME RECORD_BYTES: reading and writing of one text format.
text_tables() {
    local name=$1 title=$2 extension=$3 bfd=$4
    cat <<TABLES
## $title, reading: $size_mib MiB of random bytes ($(hex_mib "in.$extension") MiB of text, $5 bytes a record) to binary

| | start to end | ratio to \`tamrix\` | processor | ratio to \`tamrix\` |
| --- | ---: | ---: | ---: | ---: |
$(tool_row "\`tamrix convert in.$extension out.bin\`" "read_${name}_tamrix" "read_${name}_tamrix")
| the load alone, into a buffer in use | $(ms "load_$name") ms | $(ratio "load_$name" "read_${name}_tamrix") | | |
$(tool_row "\`objcopy -I $bfd -O binary\`" "read_${name}_objcopy" "read_${name}_tamrix")
$(tool_row "\`srec_cat -$name ... -binary\`" "read_${name}_srec_cat" "read_${name}_tamrix")
$(tool_row '`cp` of the text file' "read_${name}_cp" "read_${name}_tamrix")

## $title, writing: the same bytes

| | start to end | ratio to \`tamrix\` | processor | ratio to \`tamrix\` |
| --- | ---: | ---: | ---: | ---: |
$(tool_row "\`tamrix convert in.bin out.$extension\`" "write_${name}_tamrix" "write_${name}_tamrix")
| the save alone, from the buffer | $(ms "save_$name") ms | $(ratio "save_$name" "write_${name}_tamrix") | | |
$(tool_row "\`objcopy -I binary -O $bfd\`" "write_${name}_objcopy" "write_${name}_tamrix")
$(tool_row "\`srec_cat -binary ... -$name\`" "write_${name}_srec_cat" "write_${name}_tamrix")
$(tool_row '`cp` of the text file' "write_${name}_cp" "write_${name}_tamrix")
TABLES
}
# target TEXT NAME OTHER LIMIT: a ratio of two medians against its limit.
target() { echo "| $1 | $(ratio "$2" "$3") | $(met "$(ratio "$2" "$3")" "$4") | $(ratio "$2_cpu" "$3_cpu") |"; }

mkdir -p "$(dirname "$report")"
cat >"$report" <<REPORT
# Performance

Written by \`./test.sh --bench\` on $(date -u +%Y-%m-%d). Medians of $rounds rounds; in each round all candidates take their turn, one
after the other. "Processor" is the time that a processor worked for it; it counts nearly the same on a busy machine. The files lie on $(df --output=fstype . | tail -1) and are in the system's cache. The load of the machine was $(cut -d' ' -f1 /proc/loadavg) at the end.

| machine | |
| --- | --- |
| processor | $(awk -F': ' '/model name/ { print $2; exit }' /proc/cpuinfo), $(nproc) cores |
| memory | $(awk '/MemTotal/ { printf "%.0f GiB", $2 / 1048576 }' /proc/meminfo) |
| system | $(. /etc/os-release && echo "$PRETTY_NAME"), Linux $(uname -r) |
| compiler | $(g++ --version | head -1) |
| objcopy | $(objcopy --version | head -1) |
| srec_cat | $(srec_cat --version 2>&1 | head -1) |

$(text_tables intel 'Intel HEX' hex ihex 16)

$(text_tables motorola 'Motorola S' s19 srec 16)

## Tektronix: 64 KiB, as much as the format can address, fifty times

Mostly the start of the programs.

| | start to end | ratio to \`tamrix\` |
| --- | ---: | ---: |
$(row '`tamrix convert in.tek out.bin`' read_tek_tamrix read_tek_tamrix)
$(row '`srec_cat -tektronix ... -binary`' read_tek_srec_cat read_tek_tamrix)
$(row '`tamrix convert in.bin out.tek`' write_tek_tamrix write_tek_tamrix)
$(row '`srec_cat -binary ... -tektronix`' write_tek_srec_cat write_tek_tamrix)

## JEDEC: a million fuses, 32 a row

| | median |
| --- | ---: |
| the reader, into the shared buffer | $(ms jedec) ms |
| \`tamrix jedec million.jed\`, start to end | $(ms jedec_command) ms |

## Logic ICs: a library of 500 devices, and auto find over the $(ms auto_find_devices) devices that ship, on the simulated programmer

| | median, time of the processor |
| --- | ---: |
| loading the last record of the file | $(median load_last) ms |
| auto find, all devices | $(ms auto_find) ms |

## Logic analyzer: noise on eight channels, a window 1920 pixels wide

The separate model is that of the tests, in Python; a screen of both has the same lines.

| | median, time of the processor |
| --- | ---: |
| a screen at the narrowest zoom (7200 samples), to the lines that cover different pixels | $(median narrowest_screen) ms |
| 1000 screens at the first zoom (32 samples), the lines alone | $(median thousand_screens) ms |
| the same by the separate model | $(ms slow_screens) ms, $(ratio slow_screens thousand_screens) times as long |
| Record of 16 banks on the simulated programmer, drawn: a square wave of 1 kHz at each input | $(median record_1_khz) ms |
| the same with 100 kHz | $(median record_100_khz) ms |

## Binary files

The load alone, through the dialog into the shared buffer, against reading the file and writing it to a new object in shared
memory. The copy and the first load into a new buffer also take the memory from the system, page by page; a load into a
buffer in use, as a host's buffer is from its first filling on, does not.

| | median | ratio to the copy |
| --- | ---: | ---: |
$(row 'copy of the file into shared memory' copy copy)
$(row 'first load into a new buffer' load_new copy)
$(row 'load into a buffer in use, clear option 0x00' load_used_00 copy)
$(row 'load into a buffer in use, clear option 0xFF' load_used_ff copy)

| | median | |
| --- | ---: | --- |
| \`cp in.bin out.bin\` | $(ms image_cp) ms | |
| \`tamrix convert in.bin out.bin\` | $(ms image_tamrix) ms | load and save |
| large image, path byte by byte, all bytes | $(ms bytes) ms | $(mib_per_second bytes $size_mib) MB/s |
| large image, path byte by byte, even bytes | $(ms bytes_even) ms | $(mib_per_second bytes_even $((size_mib / 2))) MB/s moved |

## Start and size

| | |
| --- | ---: |
| \`tamrix --version\`, start to end | $(per_start start_tamrix) ms |
| \`objcopy --version\` | $(per_start start_objcopy) ms |
| \`srec_cat --version\` | $(per_start start_srec_cat) ms |
| size of the command | $(($(stat -c %s "$bin/tamrix") / 1024)) KiB, stripped $(($(stat -c %s stripped) / 1024)) KiB |

## Editing

A view of 264 MiB in a window of 900 by 800 pixels, a step of a person with its repaint, 200 of each:

| step | median | longest |
| --- | ---: | ---: |
$(for step in typing paging going_to_the_end selecting_to_the_end searching undo; do
    echo "| ${step//_/ } | $(median "$step") ms | $(median "${step}_longest") ms |"
done)

## Targets

| target | reached | | by processor time |
| --- | ---: | --- | ---: |
$(target "Intel, reading: at most 0.18 of objcopy's time" read_intel_tamrix read_intel_objcopy 0.18)
$(target 'Intel, reading: at most 2.00 of `cp` of the text' read_intel_tamrix read_intel_cp 2.00)
| the same, the load alone | $(ratio load_intel read_intel_cp) | $(met "$(ratio load_intel read_intel_cp)" 2) | |
$(target "Intel, writing: at most 0.25 of objcopy's time" write_intel_tamrix write_intel_objcopy 0.25)
| the same, the save alone | $(ratio save_intel write_intel_objcopy) | $(met "$(ratio save_intel write_intel_objcopy)" 0.33) | |
$(target "Motorola S, reading: at most 0.18 of objcopy's time" read_motorola_tamrix read_motorola_objcopy 0.18)
$(target 'Motorola S, reading: at most 2.00 of `cp` of the text' read_motorola_tamrix read_motorola_cp 2.00)
| the same, the load alone | $(ratio load_motorola read_motorola_cp) | $(met "$(ratio load_motorola read_motorola_cp)" 2) | |
$(target "Motorola S, writing: at most 0.25 of objcopy's time" write_motorola_tamrix write_motorola_objcopy 0.25)
| the same, the save alone | $(ratio save_motorola write_motorola_objcopy) | $(met "$(ratio save_motorola write_motorola_objcopy)" 0.33) | |
| JEDEC, a million fuses: at most 20 ms | $(ms jedec) ms | $(met "$(median jedec)" 20) | |
| logic ICs, the last record of 500: at most 5 ms | $(median load_last) ms | $(met "$(median load_last)" 5) | |
| logic ICs, auto find: at most 2000 ms | $(ms auto_find) ms | $(met "$(median auto_find)" 2000) | |
| analyzer, a screen at the narrowest zoom: at most 8 ms | $(median narrowest_screen) ms | $(met "$(median narrowest_screen)" 8) | |
| analyzer, Record of 16 banks, drawn: at most 50 ms | $(median record_100_khz) ms | $(met "$(median record_100_khz)" 50) | |
| hex view of 264 MiB, typing: at most 16 ms | $(median typing) ms | $(met "$(median typing)" 16) | |
| hex view of 264 MiB, paging: at most 16 ms | $(median paging) ms | $(met "$(median paging)" 16) | |
| hex view of 264 MiB, selecting to the end: at most 16 ms | $(median selecting_to_the_end) ms | $(met "$(median selecting_to_the_end)" 16) | |
| hex view of 264 MiB, a step of a search: at most 16 ms | $(median searching) ms | $(met "$(median searching)" 16) | |
| binary load into a buffer in use: at most 1.20 of the copy | $(ratio load_used_ff copy) | $(met "$(ratio load_used_ff copy)" 1.2) | |
| byte path: at least 50 MB/s | $(mib_per_second bytes $size_mib) MB/s | $(met 50 "$(mib_per_second bytes $size_mib)") | |
REPORT
cat "$report"
