#include "selftest/verdict.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

const selftest_fault dead_driver{.stage = selftest_stage::vcc, .pin = 7, .port = 4, .bit = 2, .expected = 1, .read = 0};
const selftest_fault bad_block{.stage = selftest_stage::ram, .place = 3, .expected = 0x5A, .read = 0x5B};

TEST(verdict, of_a_failed_run_counts_the_faults)
{
    EXPECT_EQ(verdict_of({.result = selftest_result::failed, .faults = {dead_driver}}), "failed, 1 fault");
    EXPECT_EQ(verdict_of({.result = selftest_result::failed, .faults = {dead_driver, bad_block}}), "failed, 2 faults");
    EXPECT_EQ(verdict_of({.result = selftest_result::stopped, .faults = {dead_driver}}),
              "failed, stopped after 1 fault");
}

TEST(verdict, of_a_pass_says_what_it_leaves_out)
{
    EXPECT_EQ(verdict_of({.result = selftest_result::passed}), "passed");
    EXPECT_EQ(verdict_of({.result = selftest_result::passed, .not_tested = {{selftest_stage::input, 8, "why"}}}),
              "passed, as far as it was tested");
    EXPECT_EQ(verdict_of({.result = selftest_result::passed, .faults = {bad_block}}),
              "passed; faults that fail no run: 1");
}

TEST(verdict, of_a_run_that_broke_off_says_why)
{
    EXPECT_EQ(verdict_of({.result = selftest_result::not_answered}), "not carried out: the programmer does not answer");
    EXPECT_EQ(verdict_of({.result = selftest_result::communication_error}), "not carried out: a reply did not come");
    EXPECT_EQ(verdict_of({.result = selftest_result::no_test_board}), "not carried out: no test board in the socket");
    EXPECT_EQ(verdict_of({}), "not carried out");
}

TEST(verdict, with_the_faults_is_a_line_each)
{
    EXPECT_EQ(report_text({}), "") << "nothing has run";
    EXPECT_EQ(report_text({.result = selftest_result::passed}), "passed");
    EXPECT_EQ(report_text({.result = selftest_result::failed, .faults = {dead_driver, bad_block}}),
              "failed, 2 faults\npin 7 (port 4 bit 2): VCC driver: expected high, read low\n"
              "RAM block 3: expected 5A, read 5B");
}

}  // namespace
}  // namespace tamrix
