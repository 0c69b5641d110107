#include "verify/jedec_field_rules.h"

#include <algorithm>
#include <charconv>

namespace tamrix::jedec_rules {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view bits = "01";
constexpr std::string_view decimals = "0123456789";
constexpr std::string_view hexadecimals = "0123456789ABCDEFabcdef";

/// Blanks may be anywhere; a field without anything else is wrong.
bool has_only(std::string_view text, std::string_view characters)
{
    bool any = false;
    for (const char one : text) {
        if (blanks.find(one) != std::string_view::npos) continue;
        if (characters.find(one) == std::string_view::npos) return false;
        any = true;
    }
    return any;
}

std::optional<std::string> unless(bool right, std::string_view expected)
{
    return right ? std::nullopt : std::optional{std::string{expected}};
}

/// Bits, or hexadecimal digits after an H; user data may be letters after an A, too.
std::optional<std::string> expected_of_data(char letter, std::string_view text)
{
    if (text.starts_with('H')) return unless(has_only(text.substr(1), hexadecimals), "a text of hexadecimal digits");
    if (letter == 'U' && text.starts_with('A')) return std::nullopt;
    return unless(has_only(text, bits), "0 or 1");
}

}  // namespace

std::optional<std::string> expected_of_field(char letter, std::string_view text)
{
    switch (letter) {
    case 'N': return std::nullopt;
    case 'G':
    case 'X': text = without_blanks_around(text); return unless(text == "0" || text == "1", "0 or 1");
    case 'E':
    case 'U': return expected_of_data(letter, text);
    case 'R': return unless(has_only(text, hexadecimals), "a text of hexadecimal digits");
    case 'S': return unless(!has_only(text, {}) && !wrong_condition(text), "a list of test conditions");
    default: return unless(has_only(text, decimals), "a number");
    }
}

bool is_kept_field(int letter)
{
    return letter > 0 && std::string_view{"ADEGJNRSTUX"}.find(static_cast<char>(letter)) != std::string_view::npos;
}

std::optional<char> wrong_condition(std::string_view conditions)
{
    const auto at = conditions.find_first_not_of("0123456789BCDFHKLNPUXZ \t\r\n");
    return at == std::string_view::npos ? std::nullopt : std::optional{conditions[at]};
}

std::string_view without_blanks_around(std::string_view text)
{
    const auto begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

std::optional<std::uint64_t> number_of(std::string_view text)
{
    text = without_blanks_around(text);
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// A field as a remark shows it.
std::string shown(char letter, std::string_view text)
{
    constexpr std::size_t most_shown = 40;
    std::string result{letter};
    for (const char one : text.substr(0, most_shown)) result.push_back(one >= ' ' && one < 0x7F ? one : '?');
    return "field " + result + (text.size() > most_shown ? "..." : "");
}

}  // namespace tamrix::jedec_rules
