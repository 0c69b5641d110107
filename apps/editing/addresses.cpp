#include "editing/addresses.h"

#include "base/ascii.h"

#include <charconv>
#include <system_error>

namespace tamrix::editing {

std::optional<std::uint64_t> hexadecimal_in(std::string_view typed)
{
    typed = ascii::trimmed(typed);
    if (typed.starts_with("0x") || typed.starts_with("0X")) typed.remove_prefix(2);
    std::uint64_t value = 0;
    const char* const end = typed.data() + typed.size();
    const auto [stopped, error] = std::from_chars(typed.data(), end, value, 16);
    if (error != std::errc{} || stopped != end) return std::nullopt;
    return value;
}

std::optional<std::size_t> address_in(std::string_view typed, std::size_t here, std::size_t bytes)
{
    typed = ascii::trimmed(typed);
    const char sign = typed.empty() ? '\0' : typed.front();
    const bool relative = sign == '+' || sign == '-';
    if (relative) typed.remove_prefix(1);
    const auto value = hexadecimal_in(typed);
    if (!value) return std::nullopt;
    if (sign == '-') return *value <= here ? std::optional{here - *value} : std::nullopt;
    const std::size_t from = relative ? here : 0;
    if (from >= bytes || *value >= bytes - from) return std::nullopt;
    return from + *value;
}

}  // namespace tamrix::editing
