// Number texts and arithmetic with the same result everywhere: hexadecimal in and out, fixed decimals.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix::arith {

/// Upper-case hexadecimal without leading zeros; a negative number as its 32-bit pattern.
std::string hex(std::int64_t value);
/// Upper-case hexadecimal of `width` digits, zero-padded; digits that do not fit are cut from the left.
std::string hex_fixed(std::uint64_t value, int width);
/// The value of a hexadecimal text without prefix. The empty text is 0; a text with any other character has no value.
/// Values above 2^48 become 2^48: no address or length is as large.
std::optional<std::int64_t> parse_hex(std::string_view text);
/// A fixed count of decimals, 0 to 9, halves rounded away from zero: "0.00" for two.
std::string fixed(double value, int decimals);
/// fixed() with two decimals.
std::string two_decimals(double value);
/// The shortest text of up to seven significant digits: "1.25", "2", "1E-05".
std::string plain(float value);
/// The nearest integer, halves to the even one. The value is one of 32 bits.
std::int32_t nearest(double value);

}  // namespace tamrix::arith
