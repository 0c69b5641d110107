#include "editing/numbers.h"

#include <array>

#include <gtest/gtest.h>

using namespace tamrix::editing;

namespace {

constexpr std::array<std::uint8_t, 9> nine{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0xFF};

std::uint64_t number(std::size_t address, int bits, byte_order order)
{
    std::uint64_t found = 0;
    EXPECT_TRUE(number_at(nine, address, bits, order, found));
    return found;
}

}  // namespace

TEST(number_at_the_cursor, has_both_orders_and_four_widths)
{
    EXPECT_EQ(number(0, 8, byte_order::little_endian), 0x01u);
    EXPECT_EQ(number(0, 8, byte_order::big_endian), 0x01u);
    EXPECT_EQ(number(0, 16, byte_order::little_endian), 0x2301u);
    EXPECT_EQ(number(0, 16, byte_order::big_endian), 0x0123u);
    EXPECT_EQ(number(1, 32, byte_order::little_endian), 0x89674523u);
    EXPECT_EQ(number(1, 32, byte_order::big_endian), 0x23456789u);
    EXPECT_EQ(number(0, 64, byte_order::little_endian), 0xEFCDAB8967452301u);
    EXPECT_EQ(number(1, 64, byte_order::big_endian), 0x23456789ABCDEFFFu);
}

TEST(number_at_the_cursor, is_none_where_the_bytes_end_before_it_does)
{
    std::uint64_t found = 7;
    EXPECT_FALSE(number_at(nine, 2, 64, byte_order::little_endian, found));
    EXPECT_FALSE(number_at(nine, 8, 16, byte_order::big_endian, found));
    EXPECT_FALSE(number_at(nine, 9, 8, byte_order::big_endian, found));
    EXPECT_FALSE(number_at(nine, 1000, 8, byte_order::big_endian, found));
    EXPECT_FALSE(number_at({}, 0, 8, byte_order::big_endian, found));
    EXPECT_EQ(found, 7u);
    EXPECT_TRUE(number_at(nine, 8, 8, byte_order::big_endian, found));
    EXPECT_EQ(found, 0xFFu);
}

TEST(number_at_the_cursor, is_signed_as_well_where_its_top_bit_is_1)
{
    EXPECT_EQ(decimal_text(0x7F, 8), "127");
    EXPECT_EQ(decimal_text(0x80, 8), "128 (-128)");
    EXPECT_EQ(decimal_text(0xFFFF, 16), "65535 (-1)");
    EXPECT_EQ(decimal_text(0x7FFFFFFF, 32), "2147483647");
    EXPECT_EQ(decimal_text(0x80000000, 32), "2147483648 (-2147483648)");
    EXPECT_EQ(decimal_text(0x8000000000000000, 64), "9223372036854775808 (-9223372036854775808)");
    EXPECT_EQ(decimal_text(0xFFFFFFFFFFFFFFFF, 64), "18446744073709551615 (-1)");
}

TEST(number_at_the_cursor, has_all_its_digits_in_hexadecimal)
{
    EXPECT_EQ(hexadecimal_number(0x0A, 8), "0x0A");
    EXPECT_EQ(hexadecimal_number(0xFF, 16), "0x00FF");
    EXPECT_EQ(hexadecimal_number(0, 32), "0x00000000");
    EXPECT_EQ(hexadecimal_number(0xEFCDAB8967452301, 64), "0xEFCDAB8967452301");
}
