#include "base/utf8.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace tamrix::utf8 {
namespace {

std::vector<char32_t> decode_all(std::string_view text)
{
    std::vector<char32_t> codes;
    for (std::size_t at = 0; at < text.size();) {
        const character next = decode(text, at);
        codes.push_back(next.code);
        at += next.length;
    }
    return codes;
}

using codes = std::vector<char32_t>;

TEST(utf8, decodes_characters_of_one_to_four_bytes)
{
    EXPECT_EQ(decode_all("A\x7F"), (codes{'A', 0x7F}));
    EXPECT_EQ(decode_all("\xC2\x80\xC3\xBC\xDF\xBF"), (codes{0x80, U'ü', 0x7FF}));
    EXPECT_EQ(decode_all("\xE0\xA0\x80\xE7\x94\xB5\xEF\xBF\xBF"), (codes{0x800, U'电', 0xFFFF}));
    EXPECT_EQ(decode_all("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), (codes{0x10000, 0x10FFFF}));
}

TEST(utf8, gives_one_replacement_for_each_byte_that_starts_no_character)
{
    EXPECT_EQ(decode_all("\x80\xBF"), (codes{0xFFFD, 0xFFFD}));
    EXPECT_EQ(decode_all("\xF8\x88\x80\x80\x80"), (codes(5, 0xFFFD)));
    EXPECT_EQ(decode_all("\xFE\xFF"), (codes{0xFFFD, 0xFFFD}));
    EXPECT_EQ(decode_all("\xC0\x80"), (codes{0xFFFD, 0xFFFD})) << "a longer form of an ASCII character";
}

TEST(utf8, goes_on_behind_a_character_that_is_cut)
{
    EXPECT_EQ(decode_all("\xE7\x94"), (codes{0xFFFD, 0xFFFD}));
    EXPECT_EQ(decode_all("\xE7\x94"
                         "A"),
              (codes{0xFFFD, 0xFFFD, 'A'}));
    EXPECT_EQ(decode_all("\xC3\xC3\xBC"), (codes{0xFFFD, U'ü'}));
}

TEST(utf8, reads_no_byte_behind_the_text)
{
    // The continuation byte is in memory, but outside the view.
    const std::string_view text{"\xC3\xBC", 1};
    const character cut = decode(text, 0);
    EXPECT_EQ(cut.code, 0xFFFDu);
    EXPECT_EQ(cut.length, 1u);
}

}  // namespace
}  // namespace tamrix::utf8
