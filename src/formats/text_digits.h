// Hexadecimal fields of a text line.
#pragma once

#include "files/hex_digits.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tamrix {

/// The value of `count` digits at `at` (from 0); none if the line ends before, or if one of them is no digit.
inline std::optional<unsigned> number_in(std::string_view line, std::size_t at, std::size_t count)
{
    if (at + count > line.size()) return std::nullopt;
    unsigned value = 0;
    for (const char character : line.substr(at, count)) {
        const std::uint8_t digit = hex_digits::digit(static_cast<std::uint8_t>(character));
        if (digit > 15) return std::nullopt;
        value = value * 16 + digit;
    }
    return value;
}

/// The sum of the hexadecimal digits of `value`.
constexpr unsigned digit_sum(unsigned value)
{
    unsigned sum = 0;
    for (; value != 0; value >>= 4) sum += value & 15;
    return sum;
}

}  // namespace tamrix
