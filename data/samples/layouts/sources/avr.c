// Program, constants, EEPROM contents, fuses and lock bits, each in a section of its own.
#include <avr/eeprom.h>
#include <avr/io.h>
#include <avr/pgmspace.h>

EEMEM unsigned char settings[] = {1, 2, 3, 5, 8, 13};
FUSES = {0xE2, 0xD9, 0xFF};
LOCKBITS = LB_MODE_2;

static const char greeting[] PROGMEM = "Hello from a small controller";
unsigned char started = 0x5A;

int main(void)
{
    DDRB = 0xFF;
    for (unsigned char i = 0;; ++i) PORTB = pgm_read_byte(&greeting[i % sizeof greeting]) ^ started;
}
