#include "languages.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <set>
#include <utility>
#include <vector>

namespace tamrix::tests {
namespace {

/// Texts one below the other that end, up to the colon, at one column.
const std::vector<std::vector<int>> aligned_groups{{1222, 1223}, {1282, 1283, 1284, 1285, 1287}};

bool is_aligned(int number)
{
    return std::ranges::any_of(aligned_groups,
                               [number](const auto& group) { return std::ranges::find(group, number) != group.end(); });
}

std::size_t count_of(std::string_view text, std::string_view part)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += part.size()) ++count;
    return count;
}

std::size_t blanks_before(std::string_view text) { return std::min(text.find_first_not_of(' '), text.size()); }

std::size_t blanks_behind(std::string_view text) { return text.size() - (text.find_last_not_of(' ') + 1); }

/// Runs of digits, in any order: a language may turn "1st of 4" round.
std::multiset<std::string> figures_of(std::string_view text)
{
    std::multiset<std::string> figures;
    std::string run;
    for (const char letter : std::string{text} + ' ') {
        if (std::isdigit(static_cast<unsigned char>(letter))) {
            run += letter;
        } else if (!run.empty()) {
            figures.insert(std::exchange(run, {}));
        }
    }
    return figures;
}

/// The parts between separators.
std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts(1);
    for (const char letter : text) {
        if (letter == separator) {
            parts.emplace_back();
        } else {
            parts.back() += letter;
        }
    }
    return parts;
}

bool ends_with_any(std::string_view text, std::initializer_list<std::string_view> ends)
{
    return std::ranges::any_of(ends, [text](std::string_view end) { return text.ends_with(end); });
}

TEST(languages, are_these_twelve)
{
    std::multiset<int> expected, found;
    for (const language& one : languages) expected.insert(one.offset);
    for (const auto& block : catalogue_data::blocks()) found.insert(block.offset);
    EXPECT_EQ(found, expected);
}

TEST(languages, have_the_numbers_of_english)
{
    const auto english = texts_of(0);
    ASSERT_FALSE(english.empty());
    for (const language& in : languages) {
        const auto texts = texts_of(in.offset);
        std::vector<int> lacking, unknown;
        for (const auto& [number, text] : english)
            if (!texts.contains(number)) lacking.push_back(number);
        for (const auto& [number, text] : texts)
            if (!english.contains(number)) unknown.push_back(number);
        EXPECT_EQ(lacking, std::vector<int>{}) << in.name << " lacks texts";
        EXPECT_EQ(unknown, std::vector<int>{}) << in.name << " has texts that English lacks";
    }
}

/// LoadResString searches by halves.
TEST(languages, stand_in_order_of_numbers_and_have_each_once)
{
    for (const auto& block : catalogue_data::blocks()) {
        for (std::size_t i = 1; i < block.texts.size(); ++i)
            EXPECT_LT(block.texts[i - 1].base, block.texts[i].base) << "in the block at " << block.offset;
    }
}

TEST(languages, keep_separators_and_line_breaks)
{
    for_each_translation([](const pair_of_texts& texts) {
        for (const std::string_view mark : {"|", ";", "<", ">", "+", "\n", "\r"})
            EXPECT_EQ(count_of(texts.translated, mark), count_of(texts.english, mark)) << "of \"" << mark << '"';
    });
}

TEST(languages, keep_the_patterns_of_file_dialogs)
{
    for_each_translation([](const pair_of_texts& texts) {
        if (texts.number != 1225) return;
        const auto parts = split(texts.translated, '|');
        ASSERT_EQ(parts.size(), 4u);
        EXPECT_TRUE(parts[0].ends_with(" (*.*)"));
        EXPECT_EQ(parts[1], "*.*");
        EXPECT_TRUE(parts[2].ends_with(" (*.BIN)"));
        EXPECT_EQ(parts[3], "*.bin");
    });
}

TEST(languages, keep_the_blanks_around_a_text)
{
    for_each_translation([](const pair_of_texts& texts) {
        if (is_aligned(texts.number)) return;
        EXPECT_EQ(blanks_before(texts.translated), blanks_before(texts.english));
        EXPECT_EQ(blanks_behind(texts.translated), blanks_behind(texts.english));
    });
}

TEST(languages, line_up_what_stands_one_below_the_other)
{
    for (const language& in : languages) {
        const auto texts = texts_of(in.offset);
        for (const auto& group : aligned_groups) {
            std::set<std::size_t> widths;
            std::string all = std::string{in.name} + ':';
            for (const int number : group) {
                if (!texts.contains(number)) continue;
                widths.insert(columns_of(texts.at(number).substr(0, texts.at(number).find(':'))));
                all += ' ' + std::to_string(number) + " \"" + std::string{texts.at(number)} + '"';
            }
            EXPECT_LE(widths.size(), 1u) << all;
        }
    }
}

TEST(languages, begin_the_second_column_of_a_device_note_where_english_does)
{
    for_each_translation([](const pair_of_texts& texts) {
        if (texts.number != 1281) return;
        const auto second_column = [](std::string_view text) {
            const std::size_t gap = text.rfind("  ");
            return gap == text.npos ? 0 : columns_of(text.substr(0, gap + 2));
        };
        EXPECT_EQ(second_column(texts.translated), second_column(texts.english));
    });
}

TEST(languages, keep_the_addresses_of_device_notes)
{
    for_each_translation([](const pair_of_texts& texts) {
        if (texts.number != 1286 && texts.number != 1287) return;
        const auto addresses = [](std::string_view text) { return text.substr(std::min(text.find(':'), text.size())); };
        EXPECT_EQ(addresses(texts.translated), addresses(texts.english));
    });
}

TEST(languages, keep_figures)
{
    for_each_translation(
        [](const pair_of_texts& texts) { EXPECT_EQ(figures_of(texts.translated), figures_of(texts.english)); });
}

TEST(languages, keep_the_names_of_signals_and_formats)
{
    for_each_translation([](const pair_of_texts& texts) {
        for (const std::string_view name :
             {"(HEX)", "VCC", "GND", "VPP", "tPW", "P27", "P28", "Tektronix", "ID", "VIH", "VIL", "VOH", "VOL", "0xFF"})
            EXPECT_EQ(count_of(texts.translated, name), count_of(texts.english, name)) << "of " << name;
    });
}

TEST(languages, keep_the_letter_that_a_vector_is_written_with)
{
    for_each_translation([](const pair_of_texts& texts) {
        const bool key = (texts.number >= 1167 && texts.number <= 1175) || texts.number == 1181;
        if (key) {
            EXPECT_EQ(texts.translated.substr(0, 2), texts.english.substr(0, 2));
        }
        if (texts.number == 1222 || texts.number == 1223) {
            EXPECT_TRUE(texts.translated.ends_with(": V"));
        }
    });
}

TEST(languages, end_with_the_mark_that_english_ends_with)
{
    for_each_translation([](const pair_of_texts& texts) {
        const auto [in, number, english, translated] = texts;
        EXPECT_EQ(ends_with_any(translated, {":", "："}), english.ends_with(':'));
        EXPECT_EQ(ends_with_any(translated, {"!", "！"}), english.ends_with('!'));
        EXPECT_EQ(ends_with_any(translated, {"?", "？"}), english.ends_with('?'));
        EXPECT_EQ(translated.ends_with("...."), english.ends_with("....")) << "four full stops";
    });
}

}  // namespace
}  // namespace tamrix::tests
