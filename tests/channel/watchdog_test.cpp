#include "channel/watchdog.h"

#include "support/scripted_shell.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

TEST(watchdog, sets_prgresult_to_3_once_when_its_time_is_over)
{
    scripted_shell shell;
    shell.advance(1000);
    std::uint8_t prgresult = 0;
    hw::watchdog limit{shell, prgresult, 4000};
    shell.advance(3.999);
    limit.pump();
    EXPECT_EQ(prgresult, 0);
    EXPECT_FALSE(limit.timed_out());
    shell.advance(0.0011);
    limit.pump();
    EXPECT_EQ(prgresult, 3);
    EXPECT_TRUE(limit.timed_out());
    prgresult = 0;
    shell.advance(100);
    limit.pump();
    EXPECT_EQ(prgresult, 0);
    EXPECT_EQ(shell.pumps(), 3);
}

TEST(watchdog, sees_a_time_out_that_somebody_else_set)
{
    scripted_shell shell;
    std::uint8_t prgresult = 0;
    hw::watchdog limit{shell, prgresult, 8000};
    prgresult = 3;
    EXPECT_TRUE(limit.timed_out());
    prgresult = 4;
    EXPECT_FALSE(limit.timed_out());
}

TEST(watchdog, a_new_one_begins_a_whole_limit)
{
    scripted_shell shell;
    std::uint8_t prgresult = 0;
    for (int round = 0; round < 2; ++round) {
        hw::watchdog limit{shell, prgresult, 8000};
        shell.advance(7.9);
        limit.pump();
        EXPECT_EQ(prgresult, 0);
    }
}

}  // namespace
}  // namespace tamrix::tests
