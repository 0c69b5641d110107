#include "cli/number_word.h"

#include "base/arith.h"
#include "cli/console.h"

#include <charconv>

namespace tamrix::cli {

std::optional<std::int32_t> number_in(std::string_view word, std::int32_t least, std::int32_t most)
{
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    const bool whole = error == std::errc{} && end == word.data() + word.size();
    if (!whole || number < least || number > most) return std::nullopt;
    return number;
}

std::int32_t checked_number(const std::string& option, const std::string& word, std::int32_t least, std::int32_t most)
{
    const std::optional<std::int32_t> number = number_in(word, least, most);
    if (!number) {
        refuse(option + " " + word + ": a number from " + std::to_string(least) + " to " + std::to_string(most) +
               " is expected");
    }
    return *number;
}

namespace {

bool strip_prefix(std::string_view& text)
{
    const bool prefixed = text.starts_with("0x") || text.starts_with("0X");
    if (prefixed) text.remove_prefix(2);
    return prefixed;
}

}  // namespace

std::optional<std::int64_t> hexadecimal_in(std::string_view word)
{
    strip_prefix(word);
    return word.empty() ? std::nullopt : arith::parse_hex(word);
}

std::optional<std::int64_t> checked_hexadecimal(std::string_view option, const std::optional<std::string>& word)
{
    if (!word) return std::nullopt;
    const auto value = hexadecimal_in(*word);
    if (!value) refuse(std::string{option} + " " + *word + ": not a hexadecimal number");
    return value;
}

std::optional<std::int64_t> checked_count(std::string_view option, const std::optional<std::string>& word,
                                          std::int64_t least, std::int64_t most)
{
    if (!word) return std::nullopt;
    std::string_view digits = *word;
    const int base = strip_prefix(digits) ? 16 : 10;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (error != std::errc{} || end != digits.data() + digits.size() || value < least || value > most) {
        refuse(std::string{option} + " " + *word + ": a number from " + std::to_string(least) + " to " +
               std::to_string(most) + " is expected");
    }
    return value;
}

}  // namespace tamrix::cli
