#include "base/pin_code.h"

#include "ttl/run/slow_model.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

TEST(pin_code_of_position, counts_up_both_columns_for_every_device)
{
    for (int pins = 2; pins <= 48; pins += 2) {
        for (int number = 1; number <= pins; ++number)
            EXPECT_EQ(pin_code_of_position(number - 1, pins / 2), slow::place_of_pin(number, pins).code())
                << number << " of " << pins;
    }
}

}  // namespace
}  // namespace tamrix::tests
