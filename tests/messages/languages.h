// The languages of the messages, and what tests ask of a text.
#pragma once

#include "base/utf8.h"
#include "messages/catalogue_data.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tamrix::tests {

/// How a language marks the letter that works with the Alt key.
enum class mnemonic_style {
    latin,     // a letter of the word
    cyrillic,  // likewise
    appended,  // a Latin letter in parentheses after the word
};

struct language {
    int offset;
    std::string_view name;
    mnemonic_style mnemonics = mnemonic_style::latin;
};

inline constexpr language languages[] = {
    {0, "English"},
    {3000, "Simplified Chinese", mnemonic_style::appended},
    {6000, "Traditional Chinese", mnemonic_style::appended},
    {9000, "Korean", mnemonic_style::appended},
    {12000, "Polish"},
    {15000, "English again"},
    {18000, "Italian"},
    {21000, "Dutch"},
    {24000, "Portuguese (Brazil)"},
    {27000, "Turkish"},
    {30000, "Hungarian"},
    {33000, "Russian", mnemonic_style::cyrillic},
};

using texts_by_number = std::map<int, std::string_view>;

inline texts_by_number texts_of(int offset)
{
    texts_by_number texts;
    for (const auto& block : catalogue_data::blocks()) {
        if (block.offset != offset) continue;
        for (const auto& message : block.texts) texts.emplace(message.base, message.text);
    }
    return texts;
}

/// A translated text beside the English one.
struct pair_of_texts {
    const language& in;
    int number;
    std::string_view english, translated;
};

/// Calls `check` with every text of every language; what fails in it names the language, the number and both texts.
inline void for_each_translation(const std::function<void(const pair_of_texts&)>& check)
{
    const texts_by_number english = texts_of(0);
    for (const language& in : languages) {
        for (const auto& [number, translated] : texts_of(in.offset)) {
            if (!english.contains(number)) continue;
            SCOPED_TRACE(std::string{in.name} + ", " + std::to_string(number) + ": \"" + std::string{translated} +
                         "\" for \"" + std::string{english.at(number)} + '"');
            check({in, number, english.at(number), translated});
        }
    }
}

/// What is no UTF-8 counts as U+FFFD.
inline std::u32string letters_of(std::string_view text)
{
    std::u32string letters;
    for (std::size_t at = 0; at < text.size();) {
        const utf8::character next = utf8::decode(text, at);
        const bool too_long = (next.length == 3 && next.code < 0x800) || (next.length == 4 && next.code < 0x10000);
        letters += too_long ? U'\uFFFD' : next.code;
        at += next.length;
    }
    return letters;
}

/// The letters after an "&"; one before a blank is just an "&".
inline std::u32string mnemonics_of(std::string_view text)
{
    std::u32string found;
    const std::u32string letters = letters_of(text);
    for (std::size_t at = 0; at + 1 < letters.size(); ++at)
        if (letters[at] == U'&' && letters[at + 1] != U' ') found += letters[at + 1];
    return found;
}

constexpr bool is_latin_letter(char32_t letter)
{
    return (letter >= U'A' && letter <= U'Z') || (letter >= U'a' && letter <= U'z');
}
constexpr bool is_cyrillic_letter(char32_t letter) { return letter >= 0x410 && letter <= 0x44F; }

/// Of the letters that mnemonics use.
constexpr char32_t lower_case(char32_t letter)
{
    const bool upper = (letter >= U'A' && letter <= U'Z') || (letter >= 0x410 && letter <= 0x42F);
    return upper ? letter + 0x20 : letter;
}

/// Columns in a font of fixed width, where a letter of East Asia takes two.
inline std::size_t columns_of(std::string_view text)
{
    const auto wide = [](char32_t code) {
        return (code >= 0x1100 && code <= 0x115F) || (code >= 0x2E80 && code <= 0xA4CF) ||
               (code >= 0xAC00 && code <= 0xD7A3) || (code >= 0xF900 && code <= 0xFAFF) ||
               (code >= 0xFF00 && code <= 0xFF60);
    };
    std::size_t columns = 0;
    for (const char32_t letter : letters_of(text)) columns += wide(letter) ? 2 : 1;
    return columns;
}

}  // namespace tamrix::tests
