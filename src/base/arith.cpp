#include "base/arith.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace tamrix::arith {

std::string hex(std::int64_t value)
{
    if (value < 0) value = static_cast<std::uint32_t>(value);
    std::array<char, 20> text{};
    const int length = std::snprintf(text.data(), text.size(), "%llX", static_cast<unsigned long long>(value));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string hex_fixed(std::uint64_t value, int width)
{
    std::string text(static_cast<std::size_t>(width), '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4)
        *digit = "0123456789ABCDEF"[value & 15];
    return text;
}

std::optional<std::int64_t> parse_hex(std::string_view text)
{
    constexpr std::int64_t largest = std::int64_t{1} << 48;
    std::int64_t value = 0;
    for (const char c : text) {
        int digit = 0;
        if (c >= '0' && c <= '9') {
            digit = c - '0';
        } else if (c >= 'A' && c <= 'F') {
            digit = c - 'A' + 10;
        } else if (c >= 'a' && c <= 'f') {
            digit = c - 'a' + 10;
        } else {
            return std::nullopt;
        }
        value = std::min(value * 16 + digit, largest);
    }
    return value;
}

std::string fixed(double value, int decimals)
{
    const double unit = std::pow(10.0, decimals);
    std::array<char, 400> text{};
    const double rounded = std::round(value * unit) / unit + 0.0;  // no text of zero has a sign
    const int length = std::snprintf(text.data(), text.size(), "%.*f", decimals, rounded);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string two_decimals(double value) { return fixed(value, 2); }

std::string plain(float value)
{
    std::array<char, 40> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.7G", double{value});
    return {text.data(), static_cast<std::size_t>(length)};
}

std::int32_t nearest(double value) { return static_cast<std::int32_t>(std::lrint(value)); }

}  // namespace tamrix::arith
