// Blanks and capitals of plain ASCII, whatever the locale says.
#pragma once

#include <string>
#include <string_view>

namespace tamrix::ascii {

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

inline std::string lowered(std::string_view text)
{
    std::string made{text};
    for (char& c : made) c = lower(c);
    return made;
}

/// The text without the blanks at either end.
constexpr std::string_view trimmed(std::string_view text, std::string_view blanks = " \t\r")
{
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace tamrix::ascii
