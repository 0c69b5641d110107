#include "editing/addresses.h"

#include <gtest/gtest.h>

using namespace tamrix::editing;

TEST(a_typed_address, is_hexadecimal_with_or_without_its_prefix)
{
    EXPECT_EQ(hexadecimal_in("1F0"), 0x1F0u);
    EXPECT_EQ(hexadecimal_in(" 0x1f0 "), 0x1F0u);
    EXPECT_EQ(hexadecimal_in("0X0"), 0u);
    EXPECT_EQ(hexadecimal_in("FFFFFFFFFFFFFFFF"), 0xFFFFFFFFFFFFFFFFu);
    for (const char* odd : {"", " ", "0x", "1G", "1 0", "-1", "+1", "0x-1", "10000000000000000"}) {
        EXPECT_EQ(hexadecimal_in(odd), std::nullopt) << odd;
    }
}

TEST(a_typed_address, with_a_sign_is_as_far_from_the_cursor)
{
    EXPECT_EQ(address_in("+10", 0x20, 0x40), 0x30u);
    EXPECT_EQ(address_in("-0x10", 0x20, 0x40), 0x10u);
    EXPECT_EQ(address_in("-20", 0x20, 0x40), 0u);
    EXPECT_EQ(address_in("10", 0x20, 0x40), 0x10u);
}

TEST(a_typed_address, lies_in_the_buffer)
{
    EXPECT_EQ(address_in("3F", 0x20, 0x40), 0x3Fu);
    for (const char* outside :
         {"40", "+20", "-21", "+FFFFFFFFFFFFFFFF", "FFFFFFFFFFFFFFFF", "+", "-", "--1", "+-1", ""}) {
        EXPECT_EQ(address_in(outside, 0x20, 0x40), std::nullopt) << outside;
    }
    EXPECT_EQ(address_in("0", 0, 0), std::nullopt);
    EXPECT_EQ(address_in("+0", 0, 0), std::nullopt);
}
