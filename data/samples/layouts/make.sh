#!/usr/bin/env bash
# Makes the files beside it anew. Needs Debian's gcc-avr, avr-libc, gcc-arm-none-eabi and sdcc; the tests need none of them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# avr NAME DEVICE SOURCE FORMAT: all sections, the fuses and the EEPROM at the addresses that the tools give them.
avr() {
    avr-gcc -Os -mmcu="$2" "sources/$3" -o "$work/elf" "${@:5}"
    avr-objcopy -O "$4" "$work/elf" "$1"
}
# arm NAME FORMAT CODE DATA_LOAD DATA OPTIONS CPU: addresses of the program, of the data where they wait and where they run,
# and of the option words.
arm() {
    arm-none-eabi-gcc -Os -fno-tree-loop-distribute-patterns -mcpu="$7" -nostdlib -T sources/arm.ld -Wl,--build-id=none \
        -Wl,--defsym=CODE="$3",--defsym=DATA_LOAD="$4",--defsym=DATA="$5",--defsym=OPTIONS="$6" \
        sources/arm.c -o "$work/elf"
    arm-none-eabi-objcopy -O "$2" "$work/elf" "$1"
}

avr atmega328p.hex atmega328p avr.c ihex
avr attiny85.s19 attiny85 attiny.c srec
avr atmega1284p-boot.hex atmega1284p avr.c ihex -Wl,--section-start=.text=0x1F000
arm flash-and-option-bytes.hex ihex 0x08000000 0x08001000 0x20000000 0x1FFFF800 cortex-m3
arm flash-and-settings.hex ihex 0 0x1000 0x20000000 0x10001000 cortex-m0
arm in-ram.s37 srec 0x20000000 0x20000800 0x20000800 0x20000F00 cortex-m0
arm boot-flash.hex ihex 0x1D000000 0x1D000800 0x80000000 0x9D000000 cortex-m3
arm external-flash.s37 srec 0x80000000 0x80004000 0x20000000 0x8000FFF0 cortex-m3
arm high-vectors.hex ihex 0xFFFF0000 0xFFFF0800 0x00200000 0xFFFFFFF0 arm7tdmi
sdcc -mmcs51 sources/small.c -o "$work/8051.ihx" && cp "$work/8051.ihx" 8051.ihx
sdcc -mstm8 --code-loc 0x8000 sources/small.c -o "$work/stm8.ihx" && cp "$work/stm8.ihx" stm8.ihx
sdcc -mz80 --code-loc 0x0100 --data-loc 0x8000 --no-std-crt0 sources/small.c -o "$work/z80.ihx" && cp "$work/z80.ihx" z80.ihx
