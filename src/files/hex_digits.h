// Hexadecimal text to bytes and back, as fast as memory: the one decoder and encoder of all text formats.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace tamrix::hex_digits {

namespace detail {

inline constexpr auto values = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(0xFF);
    for (int i = 0; i < 10; ++i) table['0' + i] = static_cast<std::uint8_t>(i);
    for (int i = 0; i < 6; ++i) table['A' + i] = table['a' + i] = static_cast<std::uint8_t>(10 + i);
    return table;
}();

constexpr std::uint64_t each(std::uint8_t value) { return value * 0x0101010101010101u; }

// Eight characters at once, one in each byte of a word. The additions cannot carry from one byte into the next, since
// the top bit of every byte is off.
constexpr bool eight_are_digits(std::uint64_t text)
{
    const std::uint64_t low = text & each(0x7F);
    const std::uint64_t lower_case = low | each(0x20);
    const std::uint64_t is_digit = (low + each(0x80 - '0')) & ~(low + each(0x7F - '9'));
    const std::uint64_t is_letter = (lower_case + each(0x80 - 'a')) & ~(lower_case + each(0x7F - 'f'));
    return ((is_digit | is_letter) & ~text & each(0x80)) == each(0x80);
}

/// Four bytes from eight digits, in the order of the text.
constexpr std::uint32_t four_bytes(std::uint64_t text)
{
    const std::uint64_t nibbles = (text & each(0x0F)) + ((text >> 6) & each(0x01)) * 9;
    std::uint64_t bytes = ((nibbles << 4) | (nibbles >> 8)) & 0x00FF00FF00FF00FFu;
    bytes = (bytes | (bytes >> 8)) & 0x0000FFFF0000FFFFu;
    return static_cast<std::uint32_t>(bytes | (bytes >> 16));
}

}  // namespace detail

/// The value of a digit, upper or lower case, 0 to 15; 0xFF for any other character.
inline std::uint8_t digit(std::uint8_t character) { return detail::values[character]; }

/// The four bytes of eight digits, the first in the lowest place; none if a character is no digit.
inline std::optional<std::uint32_t> decode_four(const std::uint8_t* text)
{
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t eight = 0;
    std::memcpy(&eight, text, sizeof eight);
    if (!detail::eight_are_digits(eight)) return std::nullopt;
    return detail::four_bytes(eight);
}

/// The value of two digits; negative if one of them is no digit.
inline int byte(const std::uint8_t* text)
{
    const int high = digit(text[0]);
    const int low = digit(text[1]);
    return (high | low) > 15 ? -1 : high * 16 + low;
}

/// Decodes `count` bytes from 2 * `count` digits and adds the byte sum to `sum`. Returns false at a character that is
/// no digit; `target` then has the whole bytes before that character, and nothing else changes.
bool decode(const std::uint8_t* text, std::size_t count, std::uint8_t* target, unsigned& sum);

/// Writes 2 * `count` upper-case digits and returns their end. Adds the byte sum to `sum`.
char* encode(const std::uint8_t* bytes, std::size_t count, char* text, unsigned& sum);

/// Writes the low `digits` digits of `value`, upper case, and returns their end.
char* encode_number(std::uint64_t value, int digits, char* text);

}  // namespace tamrix::hex_digits
