#include "transfer/rwfile/hex_digits.h"

#include <array>
#include <bit>
#include <cstring>

namespace tamrix::hex_digits {

namespace {

constexpr auto values = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(0xFF);
    for (int i = 0; i < 10; ++i) table['0' + i] = static_cast<std::uint8_t>(i);
    for (int i = 0; i < 6; ++i) table['A' + i] = table['a' + i] = static_cast<std::uint8_t>(10 + i);
    return table;
}();

constexpr auto pairs = [] {
    std::array<std::array<char, 2>, 256> table{};
    for (int i = 0; i < 256; ++i) table[i] = {"0123456789ABCDEF"[i / 16], "0123456789ABCDEF"[i % 16]};
    return table;
}();

constexpr std::uint64_t each(std::uint8_t value) { return value * 0x0101010101010101u; }

// Eight characters at once, one in each byte of a word. The additions cannot carry from one byte into the next, since
// the top bit of every byte is off.
bool eight_are_digits(std::uint64_t text)
{
    const std::uint64_t low = text & each(0x7F);
    const std::uint64_t lower_case = low | each(0x20);
    const std::uint64_t is_digit = (low + each(0x80 - '0')) & ~(low + each(0x7F - '9'));
    const std::uint64_t is_letter = (lower_case + each(0x80 - 'a')) & ~(lower_case + each(0x7F - 'f'));
    return ((is_digit | is_letter) & ~text & each(0x80)) == each(0x80);
}

/// Four bytes from eight digits, in the order of the text.
std::uint32_t four_bytes(std::uint64_t text)
{
    const std::uint64_t nibbles = (text & each(0x0F)) + ((text >> 6) & each(0x01)) * 9;
    std::uint64_t bytes = ((nibbles << 4) | (nibbles >> 8)) & 0x00FF00FF00FF00FFu;
    bytes = (bytes | (bytes >> 8)) & 0x0000FFFF0000FFFFu;
    return static_cast<std::uint32_t>(bytes | (bytes >> 16));
}

}  // namespace

std::uint8_t digit(std::uint8_t character) { return values[character]; }

bool decode(const std::uint8_t* text, std::size_t count, std::uint8_t* target, unsigned& sum)
{
    static_assert(std::endian::native == std::endian::little);
    std::size_t done = 0;
    unsigned added = 0;
    for (; done + 4 <= count; done += 4) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text + 2 * done, sizeof eight);
        if (!eight_are_digits(eight)) return false;
        const std::uint32_t four = four_bytes(eight);
        std::memcpy(target + done, &four, sizeof four);
        const std::uint32_t halves = (four & 0x00FF00FFu) + ((four >> 8) & 0x00FF00FFu);
        added += (halves & 0xFFFF) + (halves >> 16);
    }
    for (; done < count; ++done) {
        const int value = byte(text + 2 * done);
        if (value < 0) return false;
        target[done] = static_cast<std::uint8_t>(value);
        added += static_cast<unsigned>(value);
    }
    sum += added;
    return true;
}

char* encode(const std::uint8_t* bytes, std::size_t count, char* text, unsigned& sum)
{
    for (std::size_t i = 0; i < count; ++i) {
        sum += bytes[i];
        std::memcpy(text + 2 * i, pairs[bytes[i]].data(), 2);
    }
    return text + 2 * count;
}

char* encode_number(std::uint64_t value, int digits, char* text)
{
    for (int i = digits - 1; i >= 0; --i, value >>= 4) text[i] = pairs[value & 15][1];
    return text + digits;
}

}  // namespace tamrix::hex_digits
