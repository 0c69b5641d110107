// The languages of the plug-in's texts.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tamrix::host {

struct language {
    std::string_view code;     // as in --language
    std::string_view name;     // in the language itself
    std::string_view english;  // its name in English
    std::int32_t offset;       // what Language(0) holds
};

/// Each language once, English first.
std::span<const language> languages();

/// This offset has texts too: English again.
inline constexpr std::int32_t second_english = 15000;

/// The language of an offset; null if there is none.
const language* find_language(std::int32_t offset);

/// The offset that `word` names: a code of the list, or the offset itself in digits. None for every other word.
std::optional<std::int32_t> language_offset(std::string_view word);

/// "en, zh-cn, ...".
std::string language_codes();

}  // namespace tamrix::host
