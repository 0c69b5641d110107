#include "languages.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <iterator>
#include <set>

namespace tamrix::tests {
namespace {

/// The same in every language: names of signals, figures and the full stop that comes before text.
constexpr int same_everywhere[] = {1086, 1123, 1124, 1155, 1156, 1157, 1167, 1168, 1169, 1170};

/// Words that a language shares with English, or that its engineers take from it.
const std::map<std::string_view, std::set<int>> shared_words{
    {"Polish", {1018, 1067, 1210, 1226}},                     // Test, OK, Stop, Start
    {"Italian", {1018, 1067, 1107, 1171}},                    // Test, OK, File, Clock
    {"Dutch", {1018, 1024, 1067, 1102, 1210, 1226, 1257}},    // Test, Logic Analyzer, OK, Type, Stop, Start, Status
    {"Portuguese (Brazil)", {1067, 1127, 1171, 1257, 1353}},  // OK, Normal, Clock, Status, Total
    {"Turkish", {1018, 1127}},                                // Test, Normal
    {"Hungarian", {1067}},                                    // OK
    {"Russian", {1067}},                                      // OK
};

bool may_be_english(const pair_of_texts& texts)
{
    if (texts.in.name.starts_with("English")) return true;
    if (std::ranges::find(same_everywhere, texts.number) != std::end(same_everywhere)) return true;
    const auto words = shared_words.find(texts.in.name);
    return words != shared_words.end() && words->second.contains(texts.number);
}

TEST(languages, leave_no_text_in_english)
{
    // Case and the marks around a text do not make another word of it; a hyphen or a blank inside may.
    const auto bare = [](std::string_view text) {
        const auto is_letter = [](char one) { return std::isalnum(static_cast<unsigned char>(one)) || (one & 0x80); };
        const auto first = std::ranges::find_if(text, is_letter);
        std::string letters(first, std::find_if(text.rbegin(), std::make_reverse_iterator(first), is_letter).base());
        for (char& one : letters) one = static_cast<char>(std::tolower(static_cast<unsigned char>(one)));
        return letters;
    };
    for_each_translation([&bare](const pair_of_texts& texts) {
        if (may_be_english(texts)) {
            EXPECT_EQ(texts.translated, texts.english) << "need not be excused";
        } else {
            EXPECT_NE(bare(texts.translated), bare(texts.english));
        }
    });
}

TEST(languages, are_written_in_their_own_letters)
{
    for_each_translation([](const pair_of_texts& texts) {
        if (texts.in.mnemonics == mnemonic_style::latin || may_be_english(texts)) return;
        const bool cyrillic = texts.in.mnemonics == mnemonic_style::cyrillic, korean = texts.in.name == "Korean";
        EXPECT_TRUE(std::ranges::any_of(letters_of(texts.translated), [cyrillic, korean](char32_t letter) {
            if (cyrillic) return is_cyrillic_letter(letter);
            return korean ? letter >= 0xAC00 && letter <= 0xD7A3 : letter >= 0x4E00 && letter <= 0x9FFF;
        }));
    });
}

/// What no text may hold, as a phrase for the failure; null for all others.
const char* defect_of(char32_t letter)
{
    const auto between = [letter](char32_t first, char32_t last) { return letter >= first && letter <= last; };
    if (letter == 0xFFFD || between(0xD800, 0xDFFF) || letter > 0x10FFFF) return "is no UTF-8";
    if (letter < 0x20 || between(0x7F, 0x9F)) return "has a control character";
    if (between(0x300, 0x36F) || between(0x1100, 0x11FF) || between(0x3131, 0x318E)) return "has a decomposed letter";
    if (letter == 0xFEFF || between(0x200B, 0x200F) || between(0x2028, 0x202E)) return "has an invisible character";
    if (between(0xE000, 0xF8FF)) return "has a letter that only some fonts know";
    return nullptr;
}

TEST(languages, are_utf8_in_composed_letters_without_control_characters)
{
    for_each_translation([](const pair_of_texts& texts) {
        for (const char32_t letter : letters_of(texts.translated))
            if (const char* const defect = defect_of(letter))
                ADD_FAILURE() << "the text " << defect << " (" << static_cast<std::uint32_t>(letter) << ')';
    });
}

}  // namespace
}  // namespace tamrix::tests
