#include "workbench/logic_verdict.h"

#include <gtest/gtest.h>

using namespace tamrix::workbench;

namespace {

std::string words(const tamrix_logic_test& described) { return words_of(taken_over(described)); }

}  // namespace

TEST(logic_verdicts, count_the_rows_that_failed_and_those_that_were_ignored)
{
    EXPECT_EQ(words({TAMRIX_LOGIC_PASSED, "7400", 14, 0, 0, 0}), "passed");
    EXPECT_EQ(words({TAMRIX_LOGIC_PASSED, "7400", 14, 1, 1, 0b100}), "1 row failed, ignored (pin 3)");
    EXPECT_EQ(words({TAMRIX_LOGIC_PASSED, "7400", 14, 2, 2, 0b100100}), "2 rows failed, ignored (pins 3, 6)");
    EXPECT_EQ(words({TAMRIX_LOGIC_FAILED, "7400", 14, 1, 0, 0b100}), "failed, 1 row (pin 3)");
    EXPECT_EQ(words({TAMRIX_LOGIC_FAILED, "7400", 14, 3, 1, 1ULL << 39}), "failed, 3 rows, 1 ignored (pin 40)");
}

TEST(logic_verdicts, say_that_a_chip_was_not_tested)
{
    EXPECT_EQ(words({TAMRIX_LOGIC_NOTHING_PLAYED, "7400", 14, 0, 0, 0}), "no vectors were played");
    EXPECT_EQ(words({TAMRIX_LOGIC_NOT_CARRIED_OUT, "7400", 14, 0, 0, 0}),
              "not carried out, the programmer was not reached");
}

TEST(logic_verdicts, are_trouble_unless_every_row_passed)
{
    EXPECT_FALSE(is_trouble(taken_over({TAMRIX_LOGIC_PASSED, "7400", 14, 0, 0, 0})));
    EXPECT_TRUE(is_trouble(taken_over({TAMRIX_LOGIC_PASSED, "7400", 14, 1, 1, 1})));
    EXPECT_TRUE(is_trouble(taken_over({TAMRIX_LOGIC_FAILED, "7400", 14, 1, 0, 1})));
    EXPECT_TRUE(is_trouble(taken_over({TAMRIX_LOGIC_NOTHING_PLAYED, "7400", 14, 0, 0, 0})));
    EXPECT_TRUE(is_trouble(taken_over({TAMRIX_LOGIC_NOT_CARRIED_OUT, "7400", 14, 0, 0, 0})));
}
