#include "ttl/run_outcome.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

run_outcome with(std::vector<failed_row> rows) { return {.what = run_outcome::kind::failed, .rows = std::move(rows)}; }

}  // namespace

TEST(run_outcomes, have_the_pins_at_which_any_row_failed)
{
    EXPECT_EQ(run_outcome{}.failed_pins(), 0u);
    EXPECT_EQ(with({{1, "01HL", "01LL"}}).failed_pins(), 0b0100u);
    EXPECT_EQ(with({{1, "01HL", "01LL"}, {3, "HLHL", "LLHL"}}).failed_pins(), 0b0101u);
}

TEST(run_outcomes, take_a_blank_in_a_result_for_a_pin_that_did_not_fail)
{
    EXPECT_EQ(with({{1, "01HL", "  L "}}).failed_pins(), 0b0100u);
}

TEST(run_outcomes, look_at_no_letter_that_only_one_of_the_rows_has)
{
    EXPECT_EQ(with({{1, "01HL", "01L"}, {2, "01", "01LLL"}}).failed_pins(), 0b0100u);
    EXPECT_EQ(with({{1, std::string(70, 'H'), std::string(70, 'L')}}).failed_pins(), ~std::uint64_t{0});
}

}  // namespace tamrix
