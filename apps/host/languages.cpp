#include "host/languages.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tamrix::host {

namespace {

constexpr std::array<language, 11> table{{
    {"en", "English", "English", 0},
    {"zh-cn", "简体中文", "Simplified Chinese", 3000},
    {"zh-tw", "繁體中文", "Traditional Chinese", 6000},
    {"ko", "한국어", "Korean", 9000},
    {"pl", "Polski", "Polish", 12000},
    {"it", "Italiano", "Italian", 18000},
    {"nl", "Nederlands", "Dutch", 21000},
    {"pt-br", "Português (Brasil)", "Portuguese (Brazil)", 24000},
    {"tr", "Türkçe", "Turkish", 27000},
    {"hu", "Magyar", "Hungarian", 30000},
    {"ru", "Русский", "Russian", 33000},
}};

}  // namespace

std::span<const language> languages() { return table; }

const language* find_language(std::int32_t offset)
{
    const std::int32_t listed = offset == second_english ? 0 : offset;
    const auto* const found = std::ranges::find(table, listed, &language::offset);
    return found != table.end() ? found : nullptr;
}

std::optional<std::int32_t> language_offset(std::string_view word)
{
    const auto* const named = std::ranges::find(table, word, &language::code);
    if (named != table.end()) return named->offset;
    std::int32_t offset = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), offset);
    const bool number = error == std::errc{} && end == word.data() + word.size();
    return number && find_language(offset) != nullptr ? std::optional{offset} : std::nullopt;
}

std::string language_codes()
{
    std::string text;
    for (const language& one : table) text.append(text.empty() ? "" : ", ").append(one.code);
    return text;
}

}  // namespace tamrix::host
