// How a System Test ends: Continue and Stop at a fault, the closed form, a programmer that no longer replies.
#include "selftest/pinnote.h"

#include "system_test_runs.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::calls_from;
using tests::lines;
using tests::run;
using tests::run_and_press;
using tests::selftest_bench;
using tests::statuses;

TEST(continue_at_every_fault, ends_in_a_failed_run)
{
    selftest_bench b{9, 17};
    b.hardware.spoil = [](std::vector<bool>& pins) { pins[5] = true; };
    run_and_press(b, true);
    EXPECT_EQ(statuses(b).back(), "System Test fail!");
    EXPECT_EQ(b.report().result, selftest_result::failed);
    EXPECT_EQ(b.count("continue"), b.count("runstp"));
    EXPECT_EQ(b.count("continue"), 1 + 2 * 47 + 4)
        << "for the input, at every other pin of two kinds of drivers, and at four boards whose register 4 reads it";
    EXPECT_EQ(b.count("status .Test IC"), 1) << "it runs to its end";
}

TEST(stop_in_any_stage, ends_in_the_same_failed_state)
{
    const std::function<void(selftest_bench&)> breaks[] = {
        [](selftest_bench& b) { b.hardware.spoil = [](std::vector<bool>& pins) { pins[5] = false; }; },
        [](selftest_bench& b) { b.hardware.spoil = [](std::vector<bool>& pins) { pins[5] = true; }; },
        [](selftest_bench& b) {
            b.hardware.spoil = [&b](std::vector<bool>& pins) {
                if (b.hardware.driver == 135 && b.hardware.driver_pin != 0) pins[5] = false;
            };
        },
        [](selftest_bench& b) {
            b.hardware.spoil = [&b](std::vector<bool>& pins) {
                if (b.hardware.driver == 137 && b.hardware.driver_pin != 0) pins[5] = false;
            };
        },
        [](selftest_bench& b) { b.hardware.spoil_register = [](int, int, int value) { return value ^ 1; }; },
    };
    for (const auto& break_it : breaks) {
        selftest_bench b{9, 17};
        break_it(b);
        run_and_press(b, false);
        EXPECT_EQ(b.count("runstp"), 1);
        EXPECT_EQ(b.count("stop"), 1);
        EXPECT_EQ(statuses(b).back(), "System Test fail!");
        EXPECT_EQ(b.report().result, selftest_result::stopped);
        EXPECT_EQ(b.transcript.back(), "beep");
        EXPECT_FALSE(b.hardware.powered);
    }
}

TEST(closing_the_form, while_the_ram_is_read_ends_the_run_as_stop)
{
    selftest_bench b;
    b.during([&](pinnote& dialog) {
        b.shell.on_doevents = [&] {
            if (b.count("usbbulkread") == 2 && dialog.is_open()) dialog.ask_to_leave();
        };
        b.transcript.clear();
        dialog.testbutton.click();
    });
    EXPECT_EQ(b.count("usbbulkread"), 2);
    EXPECT_EQ(b.count("status Input Test"), 0);
    EXPECT_EQ(b.report().result, selftest_result::stopped);
    EXPECT_EQ(lines(b.transcript.end() - 3, b.transcript.end()), (lines{"setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
}

TEST(a_reply_that_does_not_come, ends_every_stage_with_a_communication_error)
{
    selftest_bench sound{9, 17};
    run(sound);
    const int replies = sound.count("replywait");
    for (int k = 0; k < replies; ++k) {
        selftest_bench b{9, 17};
        b.hardware.replies_until_lost = k;
        run(b);
        EXPECT_EQ(b.report().result, selftest_result::communication_error) << k;
        EXPECT_EQ(statuses(b).back(), "Communication error!");
        EXPECT_EQ(b.count("hwrelease"), 1);
        EXPECT_EQ(b.transcript.back(), "beep");
    }
}

TEST(a_driver_switch_that_gets_no_reply, is_a_communication_error)
{
    selftest_bench b{9};
    b.hardware.ctlout_result = 1;
    run(b);
    EXPECT_EQ(b.report().result, selftest_result::communication_error);
    EXPECT_EQ(calls_from(b, "ctlout", 3), (lines{"ctlout 129 135", "delayms 20", "status Communication error!"}));
}

TEST(a_frame_that_is_refused, ends_the_run_after_the_ram_stage)
{
    selftest_bench sound{1};
    run(sound);
    const int writes = sound.count("usbcomwrite") + sound.count("usbbulkwrite");
    for (int k = 0; k < writes; ++k) {
        selftest_bench b{1};
        b.hardware.writes_until_refused = k;
        run(b);
        EXPECT_EQ(b.report().result, selftest_result::communication_error) << k;
    }
}

}  // namespace
}  // namespace tamrix
