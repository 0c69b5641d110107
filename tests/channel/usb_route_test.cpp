#include "channel/usb_route.h"

#include <gtest/gtest.h>

namespace tamrix::hw {

namespace {

TEST(usb_route, both_questions_agree_on_true_and_false)
{
    EXPECT_TRUE(usb_is_true(bool16_true));
    EXPECT_TRUE(usb_is_not_zero(bool16_true));
    EXPECT_FALSE(usb_is_true(bool16_false));
    EXPECT_FALSE(usb_is_not_zero(bool16_false));
}

TEST(usb_route, on_every_other_value_the_questions_differ)
{
    for (int value = 1; value < 0xFFFF; ++value) {
        const auto flag = static_cast<bool16>(value);
        ASSERT_FALSE(usb_is_true(flag)) << value;
        ASSERT_TRUE(usb_is_not_zero(flag)) << value;
    }
}

}  // namespace
}  // namespace tamrix::hw
