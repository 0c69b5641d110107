// A vector table, a program, initialised data, and words in a section "options" that the linker puts elsewhere.
typedef unsigned int word;

extern word stack_top, data_begin, data_end, data_image;
void start(void);

__attribute__((section(".vectors"), used)) static const void* const vectors[] = {&stack_top, start, start, start};
__attribute__((section("options"), used)) static const word option_words[] = {0x00FF5AA5, 0x00FF00FF};

static volatile word counter = 0x12345678;
static const char text[] = "Hello from a larger controller";

void start(void)
{
    const word* from = &data_image;
    for (word* to = &data_begin; to < &data_end; ++to) *to = *from++;
    for (word i = 0;; i = (i + 1) & 15) counter += (word)text[i];
}
