// A programmer that falls silent at some step of a run and stays so, unlike one that fails once.
#include "module_programmer.h"
#include "system_test_runs.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::selftest_bench;
using tests::unit_bench;

struct programmer_of_test {
    std::int16_t model;
    std::uint8_t wfig1;
    bool usb;
};
constexpr programmer_of_test programmers[] = {{1, 0, true},   {9, 17, true},  {9, 17, false}, {15, 0, true},
                                              {40, 17, true}, {40, 0, false}, {57, 17, true}, {57, 0, false}};

/// One run, with Continue at each wait; the transcript is its own.
void run_option(selftest_bench& b, int option)
{
    b.hardware.test_board = option == 6;
    lines ran;
    b.during([&](pinnote& dialog) {
        b.at_wait = [&] { dialog.testbutton.click(); };
        dialog.Option1(option).click();
        b.transcript.clear();
        dialog.testbutton.click();
        ran = b.transcript;
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(1).usable());
        EXPECT_FALSE(dialog.teststop.usable());
    });
    b.transcript = ran;
}

/// The end of a run with a programmer that no longer answers.
void expect_let_go(const selftest_bench& b)
{
    EXPECT_EQ(b.report().result, selftest_result::communication_error);
    ASSERT_GE(b.transcript.size(), 3u);
    EXPECT_EQ((lines{b.transcript.end() - 3, b.transcript.end()}),
              (lines{"status Communication error!", "hwrelease", "beep"}));
    EXPECT_EQ(b.count("hwrelease"), 1);
    EXPECT_EQ(b.count("runstp"), 0);
    EXPECT_FALSE(b.shell.boxes().size() > 0);
}

TEST(a_programmer_that_replies_no_more, is_let_go_at_the_first_reply_that_is_missing)
{
    for (const auto& [model, wfig1, usb] : programmers) {
        for (const int option : {0, 6}) {
            selftest_bench sound{model, wfig1, usb};
            run_option(sound, option);
            ASSERT_EQ(sound.report().result, selftest_result::passed);
            const int replies = sound.count("replywait");
            EXPECT_EQ(replies > 0, usb);
            for (int k = 0; k < replies; k += k < 8 ? 1 : 7) {
                SCOPED_TRACE("model " + std::to_string(model) + " option " + std::to_string(option) + " after " +
                             std::to_string(k));
                selftest_bench b{model, wfig1, usb};
                b.hardware.replies_until_lost = k;
                run_option(b, option);
                expect_let_go(b);
                EXPECT_EQ(b.count("replywait"), k + 1) << "nothing is waited for after it";
            }
        }
    }
}

TEST(a_programmer_that_takes_no_more, is_let_go_at_the_first_pin_frame_that_it_refuses)
{
    for (const auto& [model, wfig1, usb] : programmers) {
        for (const int option : {0, 6}) {
            selftest_bench sound{model, wfig1, usb};
            run_option(sound, option);
            const int writes = sound.count("usbcomwrite") + sound.count("usbbulkwrite");
            const int pin_frames = sound.count("usbcomwrite 15: 05");
            ASSERT_GT(writes, 0);
            for (int k = 0; k < writes; ++k) {
                SCOPED_TRACE("model " + std::to_string(model) + " option " + std::to_string(option) + " after " +
                             std::to_string(k));
                selftest_bench b{model, wfig1, usb};
                b.hardware.writes_until_refused = k;
                run_option(b, option);
                if (pin_frames == 0) {
                    EXPECT_EQ(b.report().result, selftest_result::passed) << "memory alone goes by frames";
                    continue;
                }
                expect_let_go(b);
                EXPECT_EQ(b.count("usbcomwrite 15: 05"), std::max(1, k - (writes - pin_frames) + 1));
            }
        }
    }
}

// A unit with modules.

TEST(a_unit_that_replies_no_more, is_let_go_at_the_first_reply_that_is_missing)
{
    for (const int option : {0, 6, 7}) {
        unit_bench sound{39, 17};
        sound.insert_test_boards();
        sound.hardware.large_ram = true;
        sound.run(option);
        ASSERT_EQ(sound.report().result, selftest_result::passed);
        const int pin_replies = sound.count("replywait 3");
        for (int k = 0; k < pin_replies; k += k < 8 ? 1 : 37) {
            SCOPED_TRACE("option " + std::to_string(option) + " after " + std::to_string(k));
            unit_bench b{39, 17};
            b.insert_test_boards();
            b.hardware.replies_until_lost = k;
            b.run(option);
            EXPECT_EQ(b.report().result, selftest_result::communication_error);
            EXPECT_EQ(b.statuses().back(), "Communication error!");
            EXPECT_EQ(b.count("hwrelease"), 1);
            EXPECT_EQ(b.count("replywait 3"), k + 1);
            EXPECT_EQ(b.transcript.back(), "beep");
        }
    }
}

TEST(a_unit_that_takes_no_more, is_let_go_at_the_first_frame_outside_its_memory_that_it_refuses)
{
    unit_bench sound;
    sound.run();
    const int writes = sound.modules.taken;
    ASSERT_GT(writes, 400);
    for (int k = 0; k < writes; k += k < 120 ? 4 : 43) {
        SCOPED_TRACE(k);
        unit_bench b;
        b.modules.writes_until_refused = k;
        b.run();
        const bool in_load = !b.shell.boxes().empty();
        EXPECT_EQ(b.report().result, in_load ? selftest_result::failed : selftest_result::communication_error);
        EXPECT_EQ(b.statuses().back(), in_load ? "System Test fail!" : "Communication error!");
        EXPECT_EQ(b.count("hwrelease"), in_load ? 0 : 1);
        EXPECT_EQ(b.count("runstp"), 0);
    }
}

TEST(a_unit_that_takes_no_more, shows_no_result_of_its_output_test)
{
    unit_bench sound;
    sound.insert_test_boards();
    sound.run(6);
    const int writes = sound.modules.taken;
    for (int k = 0; k < writes; ++k) {
        SCOPED_TRACE(k);
        unit_bench b;
        b.insert_test_boards();
        b.modules.writes_until_refused = k;
        b.run(6);
        const bool last_signal = k == writes - 1;
        EXPECT_EQ(b.report().result, last_signal ? selftest_result::passed : selftest_result::communication_error);
        EXPECT_EQ(b.modules.signals.size(), static_cast<std::size_t>(k) / (writes / 4));
    }
}

// Stop and closing at each wait of a unit.

TEST(a_unit_at_a_wait, is_reset_by_stop_and_by_the_closed_form)
{
    const auto stuck = [](unit_bench& b) {
        b.hardware.spoil = [&b](std::vector<bool>& pins) {
            if (b.modules.named == 3) pins[30] = false;
        };
    };
    unit_bench counted;
    stuck(counted);
    counted.run();
    const int waits = counted.count("runstp");
    ASSERT_EQ(waits, 3) << "the high read, and two kinds of drivers";
    for (int k = 1; k <= waits; ++k) {
        for (const bool close : {false, true}) {
            unit_bench b;
            stuck(b);
            int wait = 0;
            b.during<pinnote204>([&](pinnote204& dialog) {
                b.at_wait = [&] {
                    if (++wait < k) return dialog.testbutton.click();
                    if (close) return dialog.ask_to_leave();
                    dialog.teststop.click();
                };
                dialog.testbutton.click();
                EXPECT_EQ(dialog.is_open(), !close);
            });
            EXPECT_EQ(wait, k);
            EXPECT_EQ(b.report().result, selftest_result::stopped);
            EXPECT_EQ(b.statuses().back(), "System Test fail!");
            EXPECT_EQ(b.hardware.driver_pin, 0);
            EXPECT_FALSE(b.hardware.powered);
        }
    }
}

}  // namespace
}  // namespace tamrix
