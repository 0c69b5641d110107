#include "base/arith.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace tamrix::arith {
namespace {

TEST(hex, is_upper_case_without_leading_zeros)
{
    EXPECT_EQ(hex(0), "0");
    EXPECT_EQ(hex(0xABCDEF), "ABCDEF");
    EXPECT_EQ(hex(0x10000), "10000");
    EXPECT_EQ(hex(0x123456789ABC), "123456789ABC");
}

TEST(hex, of_a_negative_number_is_its_32_bit_pattern)
{
    EXPECT_EQ(hex(-1), "FFFFFFFF");
    EXPECT_EQ(hex(-16), "FFFFFFF0");
    EXPECT_EQ(hex(std::numeric_limits<std::int32_t>::min()), "80000000");
}

TEST(hex_fixed, is_padded_with_zeros_to_its_width)
{
    EXPECT_EQ(hex_fixed(0xA, 2), "0A");
    EXPECT_EQ(hex_fixed(0, 8), "00000000");
    EXPECT_EQ(hex_fixed(0xBEEF, 4), "BEEF");
    EXPECT_EQ(hex_fixed(0xFFFFFFFFFFFFFFFF, 16), "FFFFFFFFFFFFFFFF");
    EXPECT_EQ(hex_fixed(0xBEEF, 0), "");
}

TEST(hex_fixed, loses_the_digits_on_the_left_that_do_not_fit)
{
    EXPECT_EQ(hex_fixed(0x12345, 4), "2345");
    EXPECT_EQ(hex_fixed(0x100, 2), "00");
}

TEST(parse_hex, takes_digits_of_both_cases)
{
    EXPECT_EQ(parse_hex("0"), 0);
    EXPECT_EQ(parse_hex("ff"), 0xFF);
    EXPECT_EQ(parse_hex("00AbCd09"), 0xABCD09);
    EXPECT_EQ(parse_hex("80000000"), 0x80000000);
}

TEST(parse_hex, of_an_empty_text_is_0) { EXPECT_EQ(parse_hex(""), 0); }

TEST(parse_hex, gives_no_value_for_a_text_with_any_other_character)
{
    for (const char* text :
         {"G", "0x10", "12 ", " 12", "-1", "1.5", "1234567890123456789 ", "&H10", "@", "`", "/", ":"})
        EXPECT_EQ(parse_hex(text), std::nullopt) << text;
}

TEST(parse_hex, stops_at_2_to_the_48_however_long_the_text_is)
{
    EXPECT_EQ(parse_hex("FFFFFFFFFFFF"), (std::int64_t{1} << 48) - 1);
    EXPECT_EQ(parse_hex("1000000000001"), std::int64_t{1} << 48);
    EXPECT_EQ(parse_hex("10000000000000000"), std::int64_t{1} << 48);
    EXPECT_EQ(parse_hex(std::string(1000, 'F')), std::int64_t{1} << 48);
}

TEST(two_decimals, always_shows_two_and_rounds_halves_away_from_zero)
{
    EXPECT_EQ(two_decimals(0), "0.00");
    EXPECT_EQ(two_decimals(1.5), "1.50");
    EXPECT_EQ(two_decimals(0.125), "0.13");
    EXPECT_EQ(two_decimals(0.375), "0.38");
    EXPECT_EQ(two_decimals(-0.125), "-0.13");
    EXPECT_EQ(two_decimals(12345.678), "12345.68");
}

TEST(fixed, has_as_many_decimals_as_asked_for)
{
    EXPECT_EQ(fixed(2.5, 0), "3");
    EXPECT_EQ(fixed(0.4, 0), "0");
    EXPECT_EQ(fixed(1.0625, 3), "1.063");
    EXPECT_EQ(fixed(0.0000035, 6), "0.000004");
    EXPECT_EQ(fixed(-0.5, 0), "-1");
    EXPECT_EQ(fixed(-0.4, 0), "0");
}

TEST(plain, is_the_shortest_text_of_up_to_seven_digits)
{
    EXPECT_EQ(plain(0), "0");
    EXPECT_EQ(plain(2), "2");
    EXPECT_EQ(plain(1.25F), "1.25");
    EXPECT_EQ(plain(0.1F), "0.1");
    EXPECT_EQ(plain(0.453125F), "0.453125");
    EXPECT_EQ(plain(0.00001F), "1E-05");
}

TEST(nearest, rounds_halves_to_even)
{
    EXPECT_EQ(nearest(0.5), 0);
    EXPECT_EQ(nearest(1.5), 2);
    EXPECT_EQ(nearest(2.5), 2);
    EXPECT_EQ(nearest(-0.5), 0);
    EXPECT_EQ(nearest(-1.5), -2);
    EXPECT_EQ(nearest(2.51), 3);
}

}  // namespace
}  // namespace tamrix::arith
