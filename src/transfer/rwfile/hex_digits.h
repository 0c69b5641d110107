// Hexadecimal text to bytes and back, as fast as memory: the one decoder and encoder of all text formats.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tamrix::hex_digits {

/// The value of a digit, 0 to 15; 0xFF for any other character. Both cases count.
std::uint8_t digit(std::uint8_t character);

/// The value of two digits; negative where one of them is none.
inline int byte(const std::uint8_t* text)
{
    const int high = digit(text[0]);
    const int low = digit(text[1]);
    return (high | low) > 15 ? -1 : high * 16 + low;
}

/// Decodes `count` bytes from 2 * `count` digits and adds the byte sum to `sum`. Where a character is no digit it
/// yields false; up to then `target` holds whole bytes that stand before that character, and nothing else is changed.
bool decode(const std::uint8_t* text, std::size_t count, std::uint8_t* target, unsigned& sum);

/// Writes 2 * `count` upper-case digits and yields the end of them. Adds the byte sum to `sum`.
char* encode(const std::uint8_t* bytes, std::size_t count, char* text, unsigned& sum);

/// Writes the low `digits` digits of `value`, upper case, and yields the end of them.
char* encode_number(std::uint64_t value, int digits, char* text);

}  // namespace tamrix::hex_digits
