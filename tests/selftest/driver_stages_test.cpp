// The stages that switch the drivers of pins, and the reset of the ports.
#include "selftest/pinnote.h"

#include "system_test_runs.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::calls_from;
using tests::lines;
using tests::run;
using tests::selftest_bench;

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

}  // namespace
}  // namespace tamrix
