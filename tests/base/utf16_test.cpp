#include "base/utf16.h"

#include <gtest/gtest.h>

namespace tamrix::utf16 {
namespace {

TEST(utf16, holds_every_character)
{
    EXPECT_EQ(from_utf8<char16_t>("aß電😀"), u"aß電😀");
    EXPECT_EQ(to_utf8(std::u16string_view{u"aß電😀"}), "aß電😀");
    EXPECT_EQ(from_utf8<char16_t>(""), u"");
    EXPECT_EQ(to_utf8(std::u16string_view{u"\u007F\u0080\u07FF\u0800\uFFFF"}),
              "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF");
}

TEST(utf16, keeps_nul_characters)
{
    using namespace std::literals;
    EXPECT_EQ(from_utf8<char16_t>("a\0b"sv), u"a\0b"s);
    EXPECT_EQ(to_utf8(u"a\0b"sv), "a\0b"s);
}

TEST(utf16, puts_the_mark_for_what_is_no_character)
{
    EXPECT_EQ(from_utf8<char16_t>("a\xFFz"), u"a\uFFFDz");
    EXPECT_EQ(from_utf8<char16_t>("\xE9"), u"\uFFFD");
    const char16_t halves[] = {u'a', 0xD83D, u'b', 0xDE00};
    EXPECT_EQ(to_utf8(std::u16string_view{halves, 4}), "a\uFFFDb\uFFFD");
    EXPECT_EQ(to_utf8(std::u16string_view{halves, 2}), "a\uFFFD");
}

}  // namespace
}  // namespace tamrix::utf16
