#include "device/parameter_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tamrix {

namespace {

bool is_digit(char letter) { return letter >= '0' && letter <= '9'; }

std::size_t digits_at(std::string_view text, std::size_t start)
{
    std::size_t count = 0;
    while (start + count < text.size() && is_digit(text[start + count])) ++count;
    return count;
}

}  // namespace

typed_number read_number(std::string_view text)
{
    constexpr std::size_t most_digits = 15;  // more than every limit has
    constexpr double too_large = 1e15;
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    const std::size_t zeros = std::min(text.find_first_not_of('0', sign), text.size()) - sign;
    const std::size_t before = zeros + digits_at(text, sign + zeros);
    std::size_t end = sign + before, decimals = 0;
    if (end < text.size() && text[end] == '.') {
        decimals = digits_at(text, end + 1);
        end += 1 + decimals;
    }
    typed_number result{.found = before + decimals > 0, .whole = end == text.size()};
    if (!result.found) return {};
    if (before - zeros > most_digits) {
        result.value = sign == 1 ? -too_large : too_large;
        return result;
    }
    // Decimals that far after the point change nothing.
    const std::string_view counted = text.substr(0, end - decimals + std::min(decimals, most_digits));
    std::from_chars(counted.data(), counted.data() + counted.size(), result.value, std::chars_format::fixed);
    return result;
}

std::int32_t whole_number(double value, std::int32_t least, std::int32_t most)
{
    return static_cast<std::int32_t>(std::clamp<double>(std::nearbyint(value), least, most));
}

std::string milliseconds_text(std::int32_t microseconds)
{
    const std::string sign = microseconds < 0 ? "-" : "";
    const std::int64_t length = std::abs(std::int64_t{microseconds});
    std::string decimals = std::to_string(1000 + length % 1000).substr(1);
    decimals.erase(decimals.find_last_not_of('0') + 1);
    return sign + std::to_string(length / 1000) + (decimals.empty() ? "" : "." + decimals);
}

}  // namespace tamrix
