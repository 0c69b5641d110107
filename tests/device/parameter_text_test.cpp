#include "device/parameter_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tamrix {
namespace {

constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min(),
                       most = std::numeric_limits<std::int32_t>::max();

TEST(read_number, takes_a_number_with_and_without_decimals)
{
    for (const auto& [text, value] : {std::pair{"5", 5.0},
                                      {"6.50", 6.5},
                                      {".5", 0.5},
                                      {"7.", 7.0},
                                      {"0", 0.0},
                                      {"007.25", 7.25},
                                      {"-3", -3.0},
                                      {"2147483.647", 2147483.647}}) {
        const typed_number typed = read_number(text);
        EXPECT_EQ(typed.value, value) << text;
        EXPECT_TRUE(typed.found) << text;
        EXPECT_TRUE(typed.whole) << text;
    }
}

TEST(read_number, stops_where_the_number_ends)
{
    for (const auto& [text, value] :
         {std::pair{"5.0.1", 5.0}, {"1..5", 1.0}, {"3,5", 3.0}, {"4 ", 4.0}, {"12V", 12.0}, {"1e9", 1.0}}) {
        const typed_number typed = read_number(text);
        EXPECT_EQ(typed.value, value) << text;
        EXPECT_TRUE(typed.found) << text;
        EXPECT_FALSE(typed.whole) << text;
    }
}

TEST(read_number, finds_none_in_a_text_without_a_digit_before_anything_else)
{
    for (const char* text : {"", ".", "..", "-", "-.", " 5", "V", "inf", "nan", "\xC3\xA9"}) {
        const typed_number typed = read_number(text);
        EXPECT_EQ(typed.value, 0.0) << text;
        EXPECT_FALSE(typed.found) << text;
        EXPECT_FALSE(typed.whole) << text;
    }
}

TEST(read_number, makes_a_very_long_number_very_large_and_not_wrong)
{
    EXPECT_GT(read_number(std::string(40, '9')).value, 1e14);
    EXPECT_LT(read_number("-" + std::string(40, '9')).value, -1e14);
    EXPECT_GT(read_number(std::string(400, '9')).value, 1e14);
    EXPECT_EQ(read_number(std::string(400, '0') + "5").value, 5.0);
    EXPECT_EQ(read_number("1." + std::string(400, '0') + "5").value, 1.0);
    EXPECT_NEAR(read_number("0." + std::string(400, '9')).value, 1.0, 1e-12);
    EXPECT_TRUE(read_number("0." + std::string(400, '9')).whole);
}

TEST(whole_number, rounds_halves_to_the_even_number)
{
    for (const auto& [value, expected] : {std::pair{0.5, 0},
                                          {1.5, 2},
                                          {2.5, 2},
                                          {3.5, 4},
                                          {-0.5, 0},
                                          {-1.5, -2},
                                          {2.4999, 2},
                                          {2.5001, 3},
                                          {512.5, 512},
                                          {513.5, 514}}) {
        EXPECT_EQ(whole_number(value, least, most), expected) << value;
    }
}

TEST(whole_number, stays_within_its_limits)
{
    EXPECT_EQ(whole_number(1e15, 1, most), most);
    EXPECT_EQ(whole_number(-1e15, least, most), least);
    EXPECT_EQ(whole_number(0, 1, 700), 1);
    EXPECT_EQ(whole_number(700.5, 1, 700), 700);
}

TEST(milliseconds_text, has_as_many_decimals_as_it_takes)
{
    EXPECT_EQ(milliseconds_text(1000), "1");
    EXPECT_EQ(milliseconds_text(10000), "10");
    EXPECT_EQ(milliseconds_text(1500), "1.5");
    EXPECT_EQ(milliseconds_text(1050), "1.05");
    EXPECT_EQ(milliseconds_text(2001), "2.001");
    EXPECT_EQ(milliseconds_text(most), "2147483.647");
    EXPECT_EQ(milliseconds_text(least), "-2147483.648");
}

}  // namespace
}  // namespace tamrix
