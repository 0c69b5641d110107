// Two fuses' bytes and some EEPROM.
#include <avr/eeprom.h>
#include <avr/io.h>

EEMEM unsigned short calibration = 0xBEEF;
FUSES = {0x62, 0xDF, 0xFF};

int main(void)
{
    for (;;) PORTB ^= 1 << PB0;
}
