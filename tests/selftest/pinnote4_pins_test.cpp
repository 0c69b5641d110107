// The lines, drivers and outputs of a 40-pin socket that is wired in an order of its own.
#include "selftest/pinnote4.h"

#include "press_test.h"
#include "selftest/small_socket_lines.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tamrix {
namespace {

using tests::lines;
using tests::press_test;
using tests::selftest_bench;

constexpr int output_option = 6;

TEST(the_lines_of_a_small_socket, reach_every_pin_once)
{
    std::vector<int> reached(lamps::of_small_socket_line.begin(), lamps::of_small_socket_line.end());
    std::ranges::sort(reached);
    std::vector<int> all(40);
    std::iota(all.begin(), all.end(), 4);
    EXPECT_EQ(reached, all);
}

TEST(the_lines_of_a_small_socket, are_painted_at_their_own_lamps)
{
    const int lamp_of_line[] = {4,  5,  6,  7,  9,  37, 8,  38, 34, 33, 30, 32, 19, 18, 17, 16, 20, 21, 22, 24,
                                25, 26, 27, 28, 15, 14, 13, 12, 11, 35, 36, 10, 29, 31, 39, 23, 43, 42, 41, 40};
    for (const bool high : {false, true}) {
        for (int line = 4; line < 44; ++line) {
            selftest_bench b{23};
            b.hardware.spoil = [&](std::vector<bool>& pins) { pins[static_cast<std::size_t>(line)] = high; };
            std::string seen;
            const lines ran = press_test<pinnote4>(b, 0, [&](pinnote4& dialog) {
                seen = tests::painted(dialog) + "|" + dialog.StatusBar1.text(1);
                dialog.testbutton.click();
            });
            const int item = lamp_of_line[line - 4] - 4;
            EXPECT_EQ(seen, std::to_string(item) + (high ? " yellow|Input is HIGH!" : " magenta|Input is LOW!"));
            ASSERT_EQ(b.report().faults.size(), 1u);
            EXPECT_EQ(b.report().faults[0].pin, item + 1);
            EXPECT_EQ(b.report().faults[0].port, lamps::bit_of(line).port);
            EXPECT_EQ(b.report().faults[0].bit, lamps::bit_of(line).bit);
            EXPECT_EQ(b.report().result, selftest_result::failed);
            EXPECT_EQ(ran.at(ran.size() - 2), "status System Test fail!");
        }
    }
}

TEST(the_lines_of_a_small_socket, without_a_pin_are_found_on_generation_17_and_painted_nowhere)
{
    for (const int line : {0, 3, 44, 47}) {
        for (const std::uint8_t wfig : {0, 17}) {
            selftest_bench b{23, wfig};
            b.hardware.spoil = [&](std::vector<bool>& pins) { pins[static_cast<std::size_t>(line)] = false; };
            press_test<pinnote4>(b, 0, [&](pinnote4& dialog) {
                EXPECT_EQ(tests::painted(dialog), "");
                dialog.testbutton.click();
            });
            EXPECT_EQ(b.report().faults.size(), wfig == 17 ? 1u : 0u);
            if (wfig == 17) {
                EXPECT_EQ(b.report().faults[0].pin, 0);
            }
        }
    }
}

// Drivers, with lists that hold some pins.

constexpr std::uint8_t some_pins[] = {9, 30};

void run_with_some_drivers(selftest_bench& b)
{
    selftest_model tested = selftest_model_of(23);
    tested.vpp.pins = tested.vcc.pins = tested.ground.pins = some_pins;
    pinnote4 dialog{b.session, b.variables.selftest, tested};
    b.shell.during(dialog, [&] {
        b.at_wait = [&] { dialog.testbutton.click(); };
        b.transcript.clear();
        dialog.testbutton.click();
    });
}

TEST(a_driver_of_a_small_socket, settles_for_200_ms_before_its_pins_are_read)
{
    selftest_bench b{23, 17};
    run_with_some_drivers(b);
    for (const char* code : {"135", "137", "138"}) {
        const std::string first = std::string{"ctlout 137 "} + code;
        const auto at = std::ranges::find(b.transcript, first);
        ASSERT_GE(b.transcript.end() - at, 6) << code;
        EXPECT_EQ(lines(at, at + 6), (lines{first, "delayms 200", "replywait 3 0 0", first, "delayms 50",
                                            std::string{"ctlout 158 "} + code}));
    }
    EXPECT_EQ(b.report().result, selftest_result::passed);
}

TEST(a_dead_driver_of_a_small_socket, is_painted_at_the_lamp_of_its_line)
{
    selftest_bench b{23, 17};
    b.hardware.spoil = [&](std::vector<bool>& pins) {
        if (b.hardware.driver == 137 && b.hardware.driver_pin == 9) pins[8] = false;
    };
    run_with_some_drivers(b);
    ASSERT_EQ(b.report().faults.size(), 1u);
    EXPECT_EQ(b.report().faults[0].stage, selftest_stage::vcc);
    EXPECT_EQ(b.report().faults[0].pin, 6) << "line 8 is lamp 9, the sixth of the socket";
    EXPECT_EQ(b.count("status VCC Output is LOW!"), 1);
    EXPECT_EQ(b.count("status System Test fail!"), 1);
}

TEST(a_dead_ground_driver_of_a_small_socket, is_kept_but_neither_asked_about_nor_a_failure)
{
    selftest_bench b{23, 17};
    b.hardware.spoil = [&](std::vector<bool>& pins) {
        if (b.hardware.driver == 138 && b.hardware.driver_pin == 9) pins[8] = true;
    };
    run_with_some_drivers(b);
    EXPECT_EQ(b.report().kept_quiet.size(), 1u);
    EXPECT_EQ(b.count("runstp"), 0);
    EXPECT_EQ(b.report().result, selftest_result::passed);
}

// The Output Test.

TEST(the_output_test_of_a_small_socket, resets_releases_and_sweeps_the_inner_lines_four_times)
{
    for (const std::int16_t model : {23, 24, 28, 29}) {
        selftest_bench b{model, 17};
        b.hardware.test_board = true;
        const lines ran = press_test<pinnote4>(b, output_option);
        EXPECT_EQ(
            lines(b.transcript.begin(), b.transcript.begin() + 14),
            (lines{"hwreset", "status .Output Test", "regout 0 50", "regout 255 50", "regout 255 2", "regout 255 4",
                   "regout 255 6", "regout 255 8", "usbcomwrite 15: 05 FF F0 FF F0 FF F0 FF F0 FF F0 FF F0 00 00",
                   "delayms 500", "usbcomwrite 15: 05 FF F0 FF F0 FF F0 FF F0 FF F0 FF F0 00 00", "delayms 500",
                   "regout 254 8", "replywait 3 0 0"}));
        EXPECT_EQ(b.count("replywait 3 0 0"), 4 * 20);
        EXPECT_EQ(b.count("usbcomwrite 15: 05 00 F0"), 2);
        EXPECT_EQ(b.count("usbcomwrite 15: 05 00 0F"), 2);
        EXPECT_EQ(b.count("usbcomwrite 15: 05 FF 0F"), 2);
        EXPECT_EQ(b.count("boardsel"), 0);
        EXPECT_EQ(b.report().result, selftest_result::passed);
        EXPECT_EQ(lines(ran.end() - 2, ran.end()), (lines{"status Output Test OK!", "beep"}));
    }
}

TEST(the_output_test_of_a_small_socket, without_a_board_says_so_and_asks_nothing)
{
    selftest_bench b{23, 17};
    const lines ran = press_test<pinnote4>(b, output_option);
    EXPECT_EQ(b.count("runstp"), 0);
    EXPECT_EQ(b.report().result, selftest_result::no_test_board);
    EXPECT_EQ(lines(ran.end() - 2, ran.end()), (lines{"status Error! No \"Test Board\" On Socket!", "beep"}));
}

TEST(an_open_line_of_the_test_board, fails_the_output_test_of_a_small_socket_at_its_pins)
{
    // Line 8 reaches pin 6, and its partner, line 39, pin 20.
    selftest_bench b{23, 17};
    b.hardware.test_board = true;
    b.hardware.open_line = 8;
    const lines ran = press_test<pinnote4>(b, output_option);
    EXPECT_EQ(b.report().result, selftest_result::failed) << "40 faults in all, but no missing board";
    EXPECT_EQ(ran.at(ran.size() - 2), "status Output Test fail!");
    ASSERT_FALSE(b.report().faults.empty());
    for (const selftest_fault& fault : b.report().faults) {
        EXPECT_EQ(fault.stage, selftest_stage::output);
        EXPECT_TRUE(fault.pin == 6 || fault.pin == 20) << fault.pin;
    }
}

TEST(stop_in_the_output_test_of_a_small_socket, ends_it_as_failed_with_a_safe_vpp)
{
    selftest_bench b{23, 17};
    b.hardware.test_board = true;
    b.hardware.open_line = 8;
    const lines ran = press_test<pinnote4>(b, output_option, [](pinnote4& dialog) { dialog.teststop.click(); });
    EXPECT_EQ(b.count("runstp"), 1);
    EXPECT_EQ(lines(ran.end() - 6, ran.end()),
              (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset", "status Output Test fail!", "beep"}));
    EXPECT_EQ(b.report().result, selftest_result::stopped);
}

}  // namespace
}  // namespace tamrix
