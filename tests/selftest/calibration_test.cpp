// Voltages that stay on until Stop.
#include "selftest/pinnote.h"

#include "selftest_bench.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::selftest_bench;

/// What a person who chooses the option and presses Test makes the programmer do.
lines calls_of_calibration(selftest_bench& b, int option)
{
    lines calls;
    b.during([&](pinnote& dialog) {
        dialog.Option1(option).click();
        b.transcript.clear();
        dialog.testbutton.click();
        calls = b.transcript;
    });
    return calls;
}

TEST(a_calibration, sets_its_voltage_at_its_pin_by_model)
{
    const lines two[] = {{"setvcc 3000", "vccpin 2 1"},
                         {"setvpp 12000 0", "vpppin 2 1"},
                         {"setvpp 12000 1", "vpppin 3 1"},
                         {"setvpp 25000 0", "vpppin 2 1"},
                         {"setvpp 25000 1", "vpppin 3 1"}};
    const lines one[] = {
        {"setvcc 5000", "vccpin 4 1"}, {"setvpp 12000 0", "vpppin 6 1"}, {}, {"setvpp 21000 0", "vpppin 6 1"}, {}};
    for (const std::int16_t model : {1, 2, 9, 15, 16, 30, 40, 41, 50, 57, 58}) {
        const bool single = model == 15 || model == 16 || model == 57 || model == 58;
        for (int option = 1; option <= 5; ++option) {
            const lines& supply = (single ? one : two)[option - 1];
            if (supply.empty()) continue;
            selftest_bench b{model};
            lines expected{"hwreset"};
            if (model > 40) expected.emplace_back("boardsel2 0 3");
            expected.emplace_back("gndpin 1 1");
            expected.insert(expected.end(), supply.begin(), supply.end());
            EXPECT_EQ(calls_of_calibration(b, option), expected) << "model " << model << " option " << option;
        }
    }
}

TEST(a_calibration, leaves_the_dialog_idle_but_for_stop)
{
    selftest_bench b;
    b.during([&](pinnote& dialog) {
        dialog.Option1(1).click();
        dialog.testbutton.click();
        EXPECT_TRUE(dialog.teststop.usable());
        EXPECT_FALSE(dialog.testbutton.usable() || dialog.OKButton.usable() || dialog.Frame1.enabled() ||
                     dialog.Option1(2).usable());
    });
}

TEST(a_calibration, goes_on_where_the_reset_is_not_answered_and_leaves_word_of_it)
{
    for (const bool usb : {true, false}) {
        selftest_bench b{1, 0, usb};
        const lines sound = calls_of_calibration(b, 1);
        EXPECT_TRUE(b.variables.selftest.answered);
        b.hardware.hwreset_result = 1;
        EXPECT_EQ(calls_of_calibration(b, 1), sound);
        EXPECT_FALSE(b.variables.selftest.answered);
        b.hardware.hwreset_result = 0;
        b.during([](pinnote& dialog) { dialog.testbutton.click(); });
        EXPECT_TRUE(b.variables.selftest.answered) << "it is about the last one";
    }
}

TEST(stop_of_a_calibration, makes_vpp_safe_before_the_reset_and_gives_the_buttons_back)
{
    selftest_bench b;
    b.during([&](pinnote& dialog) {
        dialog.Option1(5).click();
        dialog.testbutton.click();
        b.transcript.clear();
        dialog.teststop.click();
        EXPECT_EQ(b.transcript, (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(2).usable());
        EXPECT_FALSE(dialog.teststop.usable());
        b.transcript.clear();
    });
    EXPECT_EQ(b.count("hwreset"), 0) << "the form was idle again";
}

TEST(closing_the_form, during_a_calibration_leaves_everything_off)
{
    selftest_bench b;
    b.during([&](pinnote& dialog) {
        dialog.Option1(4).click();
        dialog.testbutton.click();
        b.transcript.clear();
        dialog.ask_to_leave();
    });
    EXPECT_EQ(b.transcript, (lines{"setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
    EXPECT_FALSE(b.hardware.powered);
}

}  // namespace
}  // namespace tamrix
