#include "forms/controls.h"

#include "forms/form.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace tamrix::forms {
namespace {

struct timed_form final : form {
    timer Timer1{*this}, Timer2{*this};
    layout arrangement() override { return column({}); }
};

struct timers : testing::Test {
    tests::scripted_shell shell;
    timed_form dialog;
    std::vector<double> ticks;  // in milliseconds of the virtual clock

    timers()
    {
        dialog.Timer1.on_tick = [this] { ticks.push_back(milliseconds()); };
    }
    double milliseconds() { return shell.seconds() * 1000; }
};

TEST_F(timers, stand_still_until_they_are_enabled_with_an_interval)
{
    shell.during(dialog, [&] {
        EXPECT_FALSE(dialog.Timer1.running());
        shell.advance(10);
        dialog.Timer1.enabled = true;
        EXPECT_FALSE(dialog.Timer1.running());
        shell.advance(10);
        EXPECT_EQ(ticks.size(), 0u);
        dialog.Timer1.interval_ms = 500;
        EXPECT_TRUE(dialog.Timer1.running());
    });
}

TEST_F(timers, tick_at_their_interval_of_the_virtual_clock)
{
    dialog.Timer1.interval_ms = 500;
    dialog.Timer1.enabled = true;
    shell.during(dialog, [&] {
        shell.advance(0.499);
        EXPECT_EQ(ticks.size(), 0u);
        shell.advance(1.002);
        ASSERT_EQ(ticks.size(), 3u);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(ticks[i], 500.0 * static_cast<double>(i + 1), 1e-6);
        EXPECT_NEAR(milliseconds(), 1501, 1e-6);
    });
}

TEST_F(timers, that_were_stopped_in_their_own_tick_tick_no_more)
{
    dialog.Timer1.interval_ms = 100;
    dialog.Timer1.enabled = true;
    dialog.Timer1.on_tick = [&] {
        ticks.push_back(milliseconds());
        dialog.Timer1.enabled = false;
    };
    shell.during(dialog, [&] {
        shell.advance(5);
        EXPECT_EQ(ticks.size(), 1u);
    });
}

TEST_F(timers, tick_in_the_order_of_their_times)
{
    std::vector<int> order;
    dialog.Timer1.interval_ms = 300;
    dialog.Timer2.interval_ms = 200;
    dialog.Timer1.enabled = dialog.Timer2.enabled = true;
    dialog.Timer1.on_tick = [&] { order.push_back(1); };
    dialog.Timer2.on_tick = [&] { order.push_back(2); };
    shell.during(dialog, [&] {
        shell.advance(0.5);
        EXPECT_EQ(order, (std::vector<int>{2, 1, 2}));
    });
}

TEST_F(timers, stand_still_while_their_form_is_not_shown)
{
    dialog.Timer1.interval_ms = 100;
    dialog.Timer1.enabled = true;
    shell.advance(1);
    EXPECT_EQ(ticks.size(), 0u);
}

TEST_F(timers, of_a_form_that_is_shown_again_begin_a_whole_interval)
{
    dialog.Timer1.interval_ms = 100;
    dialog.Timer1.enabled = true;
    shell.during(dialog, [&] { shell.advance(0.150); });
    EXPECT_EQ(ticks.size(), 1u);
    shell.advance(10);
    ticks.clear();
    shell.during(dialog, [&] {
        shell.advance(0.099);
        EXPECT_EQ(ticks.size(), 0u);
        shell.advance(0.002);
        EXPECT_EQ(ticks.size(), 1u);
    });
}

TEST_F(timers, without_a_handler_tick_in_vain)
{
    dialog.Timer2.interval_ms = 100;
    dialog.Timer2.enabled = true;
    shell.during(dialog, [&] {
        shell.advance(1);
        EXPECT_NEAR(shell.seconds(), 1, 1e-9);
    });
}

}  // namespace
}  // namespace tamrix::forms
