// The System Test as a person sees it: a sound programmer passes, and every fault is found, asked about and said.
#include "selftest/pinnote.h"

#include "channel/model.h"
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

TEST(system_test, passes_on_a_sound_programmer_of_every_model_and_route)
{
    for (std::int16_t model = 0; model <= 60; ++model) {
        if (hw::model_of(model).self_test_form != "pinnote") continue;
        for (const int wfig : {0, 17}) {
            for (const bool usb : {true, false}) {
                selftest_bench b{model, static_cast<std::uint8_t>(wfig), usb};
                SCOPED_TRACE("model " + std::to_string(model) + " wfig " + std::to_string(wfig) + (usb ? " usb" : ""));
                run(b);
                EXPECT_EQ(b.report().result, selftest_result::passed);
                EXPECT_TRUE(b.report().faults.empty() && b.report().kept_quiet.empty());
                EXPECT_EQ(statuses(b).back(), "System Test OK!");
                EXPECT_EQ(b.transcript.back(), "beep");
                EXPECT_EQ(b.count("runstp"), 0);
            }
        }
    }
}

TEST(system_test, says_its_stages_in_order)
{
    selftest_bench newer{40};
    run(newer);
    EXPECT_EQ(statuses(newer),
              (lines{".Test RAM .....", " RAM level= 16", "Input Test....", ".Output Test VPP .....", "",
                     ".Output Test VCC .....", "", ".Output Test GND .....", "", ".Test IC .....", "System Test OK!"}));
    selftest_bench older{9};
    run(older);
    EXPECT_EQ(statuses(older), (lines{".Test RAM .....", " RAM level= 4", "Input Test....", ".Output Test VPP .....",
                                      "", ".Output Test VCC .....", "", ".Output Test GND .....", "", ".Test IC .....",
                                      "", "System Test OK!"}));
    selftest_bench without_drivers{1};
    run(without_drivers);
    EXPECT_EQ(statuses(without_drivers),
              (lines{".Test RAM .....", " RAM level= 4", "Input Test....", ".Test IC .....", "", "System Test OK!"}));
}

TEST(system_test, begins_with_a_reset_and_the_common_board_by_model_and_route)
{
    const auto beginning = [](std::int16_t model, bool usb) {
        selftest_bench b{model, 0, usb};
        run(b);
        return lines{b.transcript.begin(), b.transcript.begin() + 4};
    };
    EXPECT_EQ(beginning(1, true), (lines{"hwreset", "boardsel 3", "delayms 100", "status .Test RAM ....."}));
    EXPECT_EQ(beginning(40, true), (lines{"hwreset", "boardsel2 0 3", "delayms 100", "status .Test RAM ....."}));
    EXPECT_EQ(beginning(1, false), (lines{"hwinit", "hwreset", "boardsel 3", "delayms 100"}));
}

TEST(a_programmer_that_does_not_answer, ends_the_run_without_another_call_than_the_release)
{
    selftest_bench b{1, 0, false};
    b.hardware.hwreset_result = 1;
    run(b);
    EXPECT_EQ(b.transcript, (lines{"hwinit", "hwreset", "hwrelease"}));
    EXPECT_EQ(b.report().result, selftest_result::not_answered);
    selftest_bench by_usb{1};
    by_usb.hardware.hwreset_result = 1;
    run(by_usb);
    EXPECT_EQ(by_usb.report().result, selftest_result::passed) << "by USB what the reset gives is not looked at";
}

// Inputs.

TEST(input_stage, reads_both_levels_with_the_inputs_pulled_the_other_way)
{
    selftest_bench b;
    run(b);
    const std::string zeros = " 00 FF 00 FF 00 FF 00 FF 00 FF 00 FF";
    const std::string ones = " FF FF FF FF FF FF FF FF FF FF FF FF";
    EXPECT_EQ(calls_from(b, "status Input Test", 9),
              (lines{"status Input Test....", "regout 0 50", "usbcomwrite 15: 05" + ones + " 00 00", "replywait 3 0 0",
                     "boardsel 7", "regout 1 50", "usbcomwrite 15: 05" + zeros + " 00 00", "replywait 3 0 0",
                     "regout 1 50"}));
    selftest_bench newer{40};
    run(newer);
    EXPECT_EQ(calls_from(newer, "boardsel2 7", 2), (lines{"boardsel2 7 3", "regout 1 50"}));
    selftest_bench registers{1, 0, false};
    run(registers);
    EXPECT_EQ(calls_from(registers, "status Input Test", 16),
              (lines{"status Input Test....", "regout 0 50", "delayms 100", "regout 255 1", "regout 255 3",
                     "regout 255 5", "regout 255 7", "regout 255 9", "regout 255 11", "regin 0", "regin 2", "regin 4",
                     "regin 6", "regin 8", "regin 10", "boardsel 7"}));
}

TEST(a_pin_that_is_stuck, is_found_and_painted_at_the_other_level)
{
    for (const bool high : {true, false}) {
        for (int lamp = 0; lamp < 48; ++lamp) {
            selftest_bench b{1, 17};
            b.hardware.spoil = [&](std::vector<bool>& pins) { pins[static_cast<std::size_t>(lamp)] = high; };
            std::string seen;
            b.during([&](pinnote& dialog) {
                b.at_wait = [&] {
                    if (seen.empty()) seen = tests::painted(dialog) + "|" + dialog.StatusBar1.text(1);
                    dialog.testbutton.click();
                };
                dialog.testbutton.click();
            });
            const std::string place = std::to_string(lamp);
            EXPECT_EQ(seen, high ? place + " yellow|Input is HIGH!" : place + " magenta|Input is LOW!");
            ASSERT_GE(b.report().faults.size(), 1u);
            const lamps::port_bit at = lamps::bit_of(lamp);
            EXPECT_EQ(b.report().faults[0], (selftest_fault{.stage = selftest_stage::input,
                                                            .pin = lamp + 1,
                                                            .port = at.port,
                                                            .bit = at.bit,
                                                            .expected = high ? 0 : 1,
                                                            .read = high ? 1 : 0}));
            EXPECT_EQ(b.report().result, selftest_result::failed);
            EXPECT_EQ(b.transcript.at(b.transcript.size() - 2), "status System Test fail!");
        }
    }
}

TEST(input_stage, asks_once_for_all_pins_of_a_level)
{
    selftest_bench b{1, 17};
    b.hardware.spoil = [](std::vector<bool>& pins) { pins.assign(pins.size(), false); };
    run_and_press(b, false);
    EXPECT_EQ(b.report().faults.size(), 48u);
    EXPECT_EQ(b.count("runstp"), 1);
    EXPECT_EQ(b.report().result, selftest_result::stopped);
}

TEST(the_outermost_pins, are_looked_at_on_generation_17_alone)
{
    for (const int wfig : {0, 16, 17, 18}) {
        for (const int lamp : {0, 3, 44, 47}) {
            selftest_bench b{40, static_cast<std::uint8_t>(wfig)};
            b.hardware.spoil = [&](std::vector<bool>& pins) { pins[static_cast<std::size_t>(lamp)] = false; };
            run_and_press(b, true);
            EXPECT_EQ(b.report().faults.empty(), wfig != 17);
            const auto untested = std::ranges::count(b.report().not_tested, 8, &untested_pins::count);
            EXPECT_EQ(untested, wfig == 17 ? 0 : 4) << "inputs and three kinds of drivers";
        }
    }
}

}  // namespace
}  // namespace tamrix
