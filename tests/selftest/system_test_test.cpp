// The System Test as a person sees it: a sound programmer passes, and every fault is found, asked about and told.
#include "selftest/pinnote.h"

#include "channel/model.h"
#include "selftest_bench.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::selftest_bench;

/// Presses Test with the System Test selected.
void run(selftest_bench& b)
{
    b.during([&](pinnote& dialog) {
        b.transcript.clear();
        dialog.testbutton.click();
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(1).usable());
        EXPECT_EQ(dialog.testbutton.caption(), "Test");
        EXPECT_FALSE(dialog.teststop.usable());
        EXPECT_EQ(dialog.testbusy() + dialog.teststep() + dialog.teststopped(), 0);
    });
}

/// A run in which the person presses Continue, or Stop, at every wait.
void run_and_press(selftest_bench& b, bool go_on)
{
    b.during([&](pinnote& dialog) {
        b.at_wait = [&] { (go_on ? dialog.testbutton : dialog.teststop).click(); };
        b.transcript.clear();
        dialog.testbutton.click();
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(1).usable());
        EXPECT_FALSE(dialog.teststop.usable());
    });
}

lines statuses(const selftest_bench& b)
{
    lines found;
    for (const std::string& line : b.transcript)
        if (line.starts_with("status")) found.push_back(line == "status" ? "" : line.substr(7));
    return found;
}

/// The calls from the first line that begins with `from`, so many.
lines calls_from(const selftest_bench& b, std::string_view from, std::ptrdiff_t count)
{
    const auto first = std::ranges::find_if(b.transcript, [&](const auto& line) { return line.starts_with(from); });
    return {first, first + std::min(count, b.transcript.end() - first)};
}

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

// Drivers.

TEST(a_driver, is_switched_on_read_and_switched_off_by_the_same_call)
{
    selftest_bench b{9};
    run(b);
    EXPECT_EQ(calls_from(b, "ctlout", 5),
              (lines{"ctlout 129 135", "delayms 20", "replywait 3 0 0", "ctlout 129 135", "delayms 50"}));
    selftest_bench registers{9, 17, false};
    run(registers);
    EXPECT_EQ(calls_from(registers, "ctlout", 11),
              (lines{"ctlout 129 135", "delayms 20", "delayms 50", "regin 0", "regin 2", "regin 4", "regin 6",
                     "regin 8", "regin 10", "ctlout 129 135", "delayms 50"}));
    selftest_bench older{9, 0, false};
    run(older);
    EXPECT_EQ(calls_from(older, "ctlout", 9).back(), "ctlout 129 135") << "five ports are read";
}

/// The pins that a stage switches on, each of which it switches off again.
std::string switched(const selftest_bench& b, int code)
{
    std::string pins;
    int open = -1;
    for (const std::string& line : b.transcript) {
        int value = 0, address = 0;
        if (std::sscanf(line.c_str(), "ctlout %d %d", &value, &address) != 2 || address != code) continue;
        if (open == value) {
            open = -1;
            continue;
        }
        EXPECT_EQ(open, -1);
        open = value;
        pins += (pins.empty() ? "" : " ") + std::to_string(value - 128);
    }
    EXPECT_EQ(open, -1);
    return pins;
}

TEST(driver_stages, switch_the_pins_that_the_model_has)
{
    std::string all;
    for (int pin = 1; pin <= 48; ++pin) all += (pin == 1 ? "" : " ") + std::to_string(pin);
    const std::string ground = "13 14 17 18 19 20 21 23 24 26 27 28 30 31 33 34";
    const std::string vcc = "11 13 15 16 17 20 24 25 26 27 28 29 30 33 34 35 36 37 39 43 45";
    const std::string vpp = "4 8 10 11 12 13 14 15 16 17 18 20 23 31 32 33 34 37 38";
    for (std::int16_t model = 0; model <= 60; ++model) {
        if (hw::model_of(model).self_test_form != "pinnote") continue;
        selftest_bench b{model};
        run(b);
        SCOPED_TRACE(model);
        const bool full = model == 9 || model == 10 || model == 13 || model == 14;
        if (model == 15 || model == 16 || model == 57 || model == 58) {
            EXPECT_EQ(switched(b, 138), ground);
            EXPECT_EQ(switched(b, 137), vcc);
            EXPECT_EQ(switched(b, 135), model < 40 ? vpp : "") << "pins that are not known are not driven";
        } else {
            for (const int code : {135, 137, 138}) EXPECT_EQ(switched(b, code), full || model >= 40 ? all : "");
        }
    }
}

TEST(pins_that_are_not_known, count_as_not_tested_and_are_said)
{
    for (const std::int16_t model : {57, 58}) {
        selftest_bench b{model, 17};
        std::string words;
        b.during([&](pinnote& dialog) {
            dialog.testbutton.click();
            words = dialog.fault_words.caption();
        });
        EXPECT_EQ(words, "not tested: 16 VPP driver, 3 VCC driver, register");
        EXPECT_EQ(b.report().not_tested,
                  (std::vector<untested_pins>{{selftest_stage::vpp, 16, "not known on this model"},
                                              {selftest_stage::vcc, 3, "not known on this model"},
                                              {selftest_stage::registers, 0, "this model has no such test"}}));
        EXPECT_NE(b.status_text().find(">> Self_test: VPP driver: 16 pins not tested (not known on this model)\n"),
                  std::string::npos);
    }
}

TEST(stages_that_a_model_skips, count_as_not_tested)
{
    selftest_bench b{1, 17};
    run(b);
    EXPECT_EQ(short_words_of(b.report().not_tested), "not tested: 48 VPP driver, 48 VCC driver, 48 GND driver");
    selftest_bench full{9, 17};
    run(full);
    EXPECT_TRUE(full.report().not_tested.empty());
    selftest_bench few{15};
    run(few);
    EXPECT_EQ(short_words_of(few.report().not_tested), "not tested: 8 input, 1 VPP driver, 1 VCC driver")
        << "pins 4 and 45 of their lists are at the outermost port";
}

struct broken_driver {
    int code, lamp;
    bool dead;
    const char *painted, *status;
};

TEST(a_driver_fault, paints_the_tested_pin_yellow_and_the_faulty_one_by_its_kind)
{
    // A dead driver, and one that follows when another pin is driven.
    const broken_driver cases[] = {
        {135, 10, true, "10 cyan", "VPP Output is HIGH!"},
        {137, 10, true, "10 red", "VCC Output is LOW!"},
        {135, 10, false, "0 yellow, 10 cyan", "VPP Output is LOW!"},
        {137, 10, false, "0 yellow, 10 red", "VCC Output is HIGH!"},
    };
    for (const broken_driver& one : cases) {
        selftest_bench b{9, 17};
        b.hardware.spoil = [&](std::vector<bool>& pins) {
            if (b.hardware.driver != one.code || b.hardware.driver_pin == 0) return;
            if (one.dead && b.hardware.driver_pin == one.lamp + 1) pins[static_cast<std::size_t>(one.lamp)] = false;
            if (!one.dead && b.hardware.driver_pin == 1) pins[static_cast<std::size_t>(one.lamp)] = true;
        };
        std::string seen;
        b.during([&](pinnote& dialog) {
            b.at_wait = [&] {
                seen = tests::painted(dialog) + "|" + tests::marked(dialog) + "|" + dialog.StatusBar1.text(1);
                dialog.testbutton.click();
            };
            dialog.testbutton.click();
        });
        EXPECT_EQ(seen, std::string{one.painted} + "|10 |" + one.status);
        ASSERT_EQ(b.report().faults.size(), 1u);
        const selftest_fault& found = b.report().faults[0];
        EXPECT_EQ(found.stage, one.code == 135 ? selftest_stage::vpp : selftest_stage::vcc);
        EXPECT_EQ(found.pin, 11);
        EXPECT_EQ(found.driven_pin, one.dead ? 11 : 1);
        EXPECT_EQ(found.expected, one.dead ? 1 : 0);
        EXPECT_EQ(found.read, one.dead ? 0 : 1);
        EXPECT_EQ(b.report().result, selftest_result::failed);
    }
}

TEST(ground_stage, keeps_its_faults_quiet)
{
    selftest_bench b{9, 17};
    b.hardware.spoil = [&](std::vector<bool>& pins) {
        if (b.hardware.driver == 138 && b.hardware.driver_pin == 11) pins[10] = true;
    };
    run(b);
    EXPECT_EQ(b.report().result, selftest_result::passed);
    EXPECT_EQ(b.count("runstp"), 0);
    EXPECT_TRUE(b.report().faults.empty());
    ASSERT_EQ(b.report().kept_quiet.size(), 1u);
    EXPECT_EQ(words_of(b.report().kept_quiet[0]), "pin 11 (port 3 bit 2): GND driver: expected low, read high");
}

TEST(port_reset, drives_the_ports_high_twice_and_releases_them_by_usb)
{
    selftest_bench b;
    run(b);
    const std::string driven = "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00 00";
    const std::string released = "usbcomwrite 15: 05 FF FF FF FF FF FF FF FF FF FF FF FF 00 00";
    EXPECT_EQ(calls_from(b, "busmode", 7),
              (lines{"busmode 0", driven, "delayms 500", driven, "delayms 500", released, "delayms 500"}));
    selftest_bench registers{1, 0, false};
    run(registers);
    EXPECT_EQ(calls_from(registers, "busmode", 2), (lines{"busmode 0", "status .Test IC ....."}));
    selftest_bench newer{40};
    run(newer);
    const auto reset = std::ranges::find(newer.transcript, "busmode 0");
    EXPECT_EQ(*(reset - 1), "boardsel2 0 3");
}

// How runs end.

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
