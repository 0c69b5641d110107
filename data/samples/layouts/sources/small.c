// For controllers with eight bits.
static const unsigned char table[] = {0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07, 0x7F, 0x6F};
volatile unsigned char shown;
#ifdef __SDCC_stm8
const unsigned char __at(0x4800) option_bytes[] = {0x00, 0x00, 0xFF, 0x00, 0xFF};
const unsigned char __at(0x4000) settings[] = {1, 2, 3, 5, 8, 13};
#endif

void main(void)
{
    unsigned char i = 0;
    for (;;) {
        shown = table[i];
        if (++i == sizeof table) i = 0;
    }
}
