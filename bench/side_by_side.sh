#!/usr/bin/env bash
# Measures the command side by side with other tools, in turns in one run, and writes docs/performance.md.
set -euo pipefail

if (($# != 1)) || [[ ! -x $1/bin/tamrix || ! -x $1/bin/bench_loads ]]; then
    echo "usage: bench/side_by_side.sh BUILD_FOLDER (of a build of everything, best the release)" >&2
    exit 2
fi
bin=$(cd "$1/bin" && pwd)
report=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/docs/performance.md
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

same() { cmp -s "$1" "$2" || { echo "$1 and $2 differ: $3" >&2 && exit 1; }; }

echo "Making $size_mib MiB of random bytes" >&2
head -c $((size_mib << 20)) /dev/urandom >in.bin
objcopy -I binary -O ihex in.bin in.hex

start_many() { for ((i = 0; i < 50; ++i)); do "$@" --version; done; }

for ((round = 1; round <= rounds; ++round)); do
    echo "Round $round of $rounds" >&2
    time_of read_cp out.hex cp in.hex out.hex
    time_of read_tamrix out.bin "$bin/tamrix" convert in.hex out.bin
    same in.bin out.bin "tamrix read in.hex"
    time_of read_objcopy out.bin objcopy -I ihex -O binary in.hex out.bin
    same in.bin out.bin "objcopy read in.hex"
    time_of read_srec_cat out.bin srec_cat in.hex -intel -o out.bin -binary
    same in.bin out.bin "srec_cat read in.hex"
    time_of write_objcopy out.hex objcopy -I binary -O ihex in.bin out.hex
    time_of write_srec_cat out.hex srec_cat in.bin -binary -o out.hex -intel
    time_of write_tamrix out.hex "$bin/tamrix" convert in.bin out.hex
    rm -f copy.hex
    time_of write_cp copy.hex cp out.hex copy.hex
    time_of image_cp copy.bin cp in.bin copy.bin
    time_of image_tamrix out.bin "$bin/tamrix" convert in.bin out.bin
    time_of start_tamrix none start_many "$bin/tamrix"
    time_of start_objcopy none start_many objcopy
    time_of start_srec_cat none start_many srec_cat
    "$bin/bench_loads" in.bin 1 "$folder/" >>times
    rm -f tmpbuf.bin copy.hex copy.bin
done
objcopy -I ihex -O binary out.hex out.bin
same in.bin out.bin "objcopy read what tamrix wrote"

strip -o stripped "$bin/tamrix"
per_start() { awk -v t="$(median "$1")" 'BEGIN { printf "%.1f", t / 50 }'; }
row() { echo "| $1 | $(ms "$2") ms | $(ratio "$2" "$3") |"; }
tool_row() { echo "| $1 | $(ms "$2") ms | $(ratio "$2" "$3") | $(ms "$2_cpu") ms | $(ratio "$2_cpu" "$3_cpu") |"; }
hex_mib() { awk -v b="$(stat -c %s "$1")" 'BEGIN { printf "%.0f", b / 1048576 }'; }

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

## Reading: $size_mib MiB of random bytes, Intel HEX ($(hex_mib in.hex) MiB, 16 bytes a record) to binary

| | start to end | ratio to \`tamrix\` | processor | ratio to \`tamrix\` |
| --- | ---: | ---: | ---: | ---: |
$(tool_row '`tamrix convert in.hex out.bin`' read_tamrix read_tamrix)
$(tool_row '`objcopy -I ihex -O binary`' read_objcopy read_tamrix)
$(tool_row '`srec_cat -intel ... -binary`' read_srec_cat read_tamrix)
$(tool_row '`cp` of the HEX file' read_cp read_tamrix)

## Writing: the same bytes, binary to Intel HEX

| | start to end | ratio to \`tamrix\` | processor | ratio to \`tamrix\` |
| --- | ---: | ---: | ---: | ---: |
$(tool_row '`tamrix convert in.bin out.hex`' write_tamrix write_tamrix)
$(tool_row '`objcopy -I binary -O ihex`' write_objcopy write_tamrix)
$(tool_row '`srec_cat -binary ... -intel`' write_srec_cat write_tamrix)
$(tool_row '`cp` of the HEX file' write_cp write_tamrix)

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

## Targets

| target | reached | |
| --- | ---: | --- |
| reading at most 0.25 of objcopy's time | $(ratio read_tamrix read_objcopy) | $(met "$(ratio read_tamrix read_objcopy)" 0.25) |
| writing at most 0.50 of objcopy's time | $(ratio write_tamrix write_objcopy) | $(met "$(ratio write_tamrix write_objcopy)" 0.50) |
| binary load into a buffer in use at most 1.2 of the copy | $(ratio load_used_ff copy) | $(met "$(ratio load_used_ff copy)" 1.2) |
| byte path at least 50 MB/s | $(mib_per_second bytes $size_mib) MB/s | $(met 50 "$(mib_per_second bytes $size_mib)") |
REPORT
cat "$report"
