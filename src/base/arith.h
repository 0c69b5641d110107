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
/// Two decimals, "0.00", halves rounded away from zero.
std::string two_decimals(double value);

}  // namespace tamrix::arith
