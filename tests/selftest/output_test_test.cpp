// The Output Test through a test board that links each pin of one side to the opposite pin.
#include "selftest/pinnote.h"

#include "channel/model.h"
#include "selftest_bench.h"

#include <gtest/gtest.h>

#include <bit>

namespace tamrix {
namespace {

using tests::lines;
using tests::selftest_bench;

/// Chooses the Output Test and presses Test; at every wait Continue or Stop is pressed.
void run(selftest_bench& b, bool go_on = true)
{
    b.during([&](pinnote& dialog) {
        b.at_wait = [&b, &dialog, go_on] { (go_on ? dialog.testbutton : dialog.teststop).click(); };
        dialog.Option1(6).click();
        b.transcript.clear();
        dialog.testbutton.click();
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(1).usable());
        EXPECT_FALSE(dialog.teststop.usable());
        EXPECT_EQ(dialog.testbutton.caption(), "Test");
        EXPECT_EQ(b.transcript.back(), "beep");
    });
}

std::string last_status(const selftest_bench& b)
{
    const auto found = std::find_if(b.transcript.rbegin(), b.transcript.rend(),
                                    [](const auto& line) { return line.starts_with("status"); });
    return found->substr(7);
}

std::string frame(const std::string& output, const std::string& mask)
{
    std::string text = "usbcomwrite 15: 05";
    for (int port = 0; port < 6; ++port) text += " " + output + " " + mask;
    return text + " 00 00";
}

TEST(output_test, passes_with_a_test_board_on_every_model_and_route)
{
    for (std::int16_t model = 0; model <= 60; ++model) {
        if (hw::model_of(model).self_test_form != "pinnote") continue;
        for (const int wfig : {0, 17}) {
            for (const bool usb : {true, false}) {
                selftest_bench b{model, static_cast<std::uint8_t>(wfig), usb};
                b.hardware.test_board = true;
                run(b);
                EXPECT_EQ(last_status(b), "Output Test OK!") << model;
                EXPECT_EQ(b.report().result, selftest_result::passed);
                EXPECT_EQ(b.report().item, 6);
            }
        }
    }
}

TEST(output_test, without_a_board_says_so_and_asks_nothing)
{
    for (const std::int16_t model : {1, 9, 15, 40, 41, 57}) {
        for (const bool usb : {true, false}) {
            selftest_bench b{model, 0, usb};
            run(b);
            EXPECT_EQ(last_status(b), "Error! No \"Test Board\" On Socket!") << model;
            EXPECT_EQ(b.report().result, selftest_result::no_test_board);
            EXPECT_EQ(b.count("runstp"), 0);
            EXPECT_TRUE(b.report().faults.empty());
            EXPECT_EQ(b.count(usb ? "usbcomwrite" : "regout 1"), usb ? 2 : b.count("regout 1")) << "one sweep";
        }
    }
}

TEST(output_test, below_40_sweeps_the_inner_pins_and_through_board_7_the_outermost_ones)
{
    selftest_bench b;
    b.hardware.test_board = true;
    run(b);
    EXPECT_EQ(lines(b.transcript.begin(), b.transcript.begin() + 4),
              (lines{"boardsel 0", "status .Output Test.....", frame("FF", "F0"), "delayms 500"}));
    lines order;
    for (const std::string& line : b.transcript)
        if (line.starts_with("usbcomwrite") || line.starts_with("boardsel")) order.push_back(line);
    const std::string sweeps[] = {frame("FF", "F0"), frame("00", "F0"), frame("00", "0F"), frame("FF", "0F"),
                                  frame("00", "F0"), frame("FF", "F0"), frame("00", "0F"), frame("FF", "0F")};
    lines expected{"boardsel 0"};
    for (int i = 0; i < 8; ++i) {
        if (i == 4) expected.emplace_back("boardsel 7");
        expected.insert(expected.end(), {sweeps[i], sweeps[i]});
    }
    EXPECT_EQ(order, expected);
    EXPECT_EQ(b.count("replywait"), 4 * 20 + 4 * 4);
    EXPECT_EQ(b.count("regout 1 50") + b.count("regout 0 50") + b.count("setvcc") + b.count("hwreset"), 0);
    selftest_bench newer_generation{1, 17};
    newer_generation.hardware.test_board = true;
    run(newer_generation);
    EXPECT_EQ(newer_generation.count("boardsel 7"), 0);
    EXPECT_EQ(newer_generation.count("replywait"), 4 * 20 + 4 * 4) << "the outermost pins are swept all the same";
}

TEST(output_test, from_40_on_sweeps_whole_sides_that_are_fed_by_5_volts)
{
    selftest_bench b{40};
    b.hardware.test_board = true;
    run(b);
    EXPECT_EQ(lines(b.transcript.begin(), b.transcript.begin() + 7),
              (lines{"boardsel2 0 3", "status .Output Test.....", "boardsel2 7 0", "setvcc 5000", "delayms 100",
                     frame("FF", "F0"), "delayms 500"}));
    lines frames;
    for (const std::string& line : b.transcript)
        if (line.starts_with("usbcomwrite")) frames.push_back(line);
    EXPECT_EQ(frames, (lines{frame("FF", "F0"), frame("FF", "F0"), frame("00", "F0"), frame("00", "F0"),
                             frame("00", "0F"), frame("00", "0F"), frame("FF", "0F"), frame("FF", "0F")}));
    EXPECT_EQ(b.count("replywait"), 4 * 24);
    EXPECT_EQ(b.count("setvcc 5000"), 4);
}

/// The registers that the sweep of a side and level writes, in order.
lines written(std::int16_t model, const std::string& outputs, const std::string& masks)
{
    selftest_bench b{model};
    b.hardware.test_board = true;
    run(b);
    auto at = std::ranges::find(b.transcript, frame(outputs, masks)) + 4;
    lines found;
    for (; at != b.transcript.end() && !at->starts_with("usbcomwrite"); ++at)
        if (at->starts_with("regout")) found.push_back(*at);
    return found;
}

TEST(a_sweep, drives_one_line_after_the_other_and_leaves_each_port_idle)
{
    lines left = written(40, "FF", "F0");
    left.resize(12);
    EXPECT_EQ(left, (lines{"regout 254 10", "regout 253 10", "regout 251 10", "regout 247 10", "regout 255 10",
                           "regout 254 8", "regout 253 8", "regout 251 8", "regout 247 8", "regout 255 8",
                           "regout 254 6", "regout 253 6"}));
    lines right = written(40, "00", "0F");
    right.resize(7);
    EXPECT_EQ(right, (lines{"regout 128 10", "regout 64 10", "regout 32 10", "regout 16 10", "regout 0 10",
                            "regout 128 8", "regout 64 8"}));
    EXPECT_EQ(written(40, "FF", "0F").size(), 24u + 5u);
    EXPECT_EQ(written(1, "FF", "F0").front(), "regout 254 8") << "lines 0 to 3 are swept apart";
}

TEST(a_sweep, by_registers_pulls_the_inputs_and_waits_for_no_reply)
{
    selftest_bench b{1, 0, false};
    b.hardware.test_board = true;
    run(b);
    EXPECT_EQ(b.count("replywait"), 0);
    EXPECT_EQ(b.count("regout 0 50"), 4);
    EXPECT_EQ(b.count("regout 1 50"), 4);
    const auto first = std::ranges::find(b.transcript, "regout 0 50");
    EXPECT_EQ(lines(first, first + 7), (lines{"regout 0 50", frame("FF", "F0"), "delayms 500", frame("FF", "F0"),
                                              "delayms 500", "regout 254 8", "regin 0"}));
    selftest_bench newer{40, 0, false};
    newer.hardware.test_board = true;
    run(newer);
    EXPECT_EQ(newer.count("regout 0 50") + newer.count("regout 1 50"), 0);
}

/// What the open pins read: the level of the lines that are not driven.
void pull_open_line_to_idle(selftest_bench& b)
{
    b.hardware.spoil = [&b](std::vector<bool>& pins) {
        const bool idle = std::popcount(b.hardware.outputs[0]) > 4;
        for (const int lamp : {b.hardware.open_line, 47 - b.hardware.open_line}) {
            const bool left = lamp < 24, left_driven = b.hardware.masks[0] == 240;
            if (left != left_driven) pins[static_cast<std::size_t>(lamp)] = idle;
        }
    };
}

TEST(an_open_line, gives_one_fault_a_sweep_and_fails_the_run)
{
    for (const std::int16_t model : {1, 40}) {
        for (int line = 4; line < 24; ++line) {
            selftest_bench b{model};
            b.hardware.test_board = true;
            b.hardware.open_line = line;
            pull_open_line_to_idle(b);
            run(b);
            EXPECT_EQ(last_status(b), "Output Test fail!");
            EXPECT_EQ(b.report().result, selftest_result::failed);
            ASSERT_EQ(b.report().faults.size(), 4u);
            EXPECT_EQ(b.count("runstp"), 4);
            EXPECT_EQ(b.report().faults[0].pin, 48 - line);
            EXPECT_EQ(b.report().faults[0].driven_pin, line + 1);
            EXPECT_EQ(b.report().faults[2].pin, line + 1);
            EXPECT_EQ(b.report().faults[2].driven_pin, 48 - line);
        }
    }
}

TEST(an_open_line, whose_pin_floats_high_is_no_missing_board)
{
    selftest_bench b;
    b.hardware.test_board = true;
    b.hardware.open_line = 10;
    run(b);
    EXPECT_EQ(b.report().result, selftest_result::failed);
    EXPECT_EQ(b.report().faults.size(), 6u) << "once in a sweep; the outermost ones see it at the low level only";
}

TEST(an_open_line, paints_the_line_and_the_pin_by_the_level_and_says_it)
{
    selftest_bench b;
    b.hardware.test_board = true;
    b.hardware.open_line = 10;
    pull_open_line_to_idle(b);
    lines seen;
    b.during([&](pinnote& dialog) {
        b.at_wait = [&] {
            seen.push_back(tests::painted(dialog) + "|" + tests::marked(dialog) + "|" + dialog.StatusBar1.text(1));
            dialog.testbutton.click();
        };
        dialog.Option1(6).click();
        dialog.testbutton.click();
    });
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_EQ(seen[0], "10 magenta, 37 magenta|10 |Output is LOW!");
    EXPECT_EQ(seen[1], "10 yellow, 37 yellow|10 |Output is HIGH!");
}

TEST(stop_at_a_fault, ends_the_output_test)
{
    selftest_bench b;
    b.hardware.test_board = true;
    b.hardware.open_line = 10;
    run(b, false);
    EXPECT_EQ(b.count("runstp"), 1);
    EXPECT_EQ(b.report().result, selftest_result::stopped);
    EXPECT_EQ(last_status(b), "Output Test fail!");
    const auto stop = std::ranges::find(b.transcript, "stop");
    EXPECT_EQ(lines(stop, stop + 4), (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
}

TEST(a_sweep, asks_only_after_all_its_lines_fault_by_fault)
{
    selftest_bench b{40};
    b.hardware.test_board = true;
    b.hardware.spoil = [&](std::vector<bool>& pins) { pins[30] = false; };
    run(b, false);
    const auto wait = std::ranges::find(b.transcript, "runstp");
    EXPECT_EQ(std::count(b.transcript.begin(), wait, "replywait 3 0 0"), 24);
    selftest_bench all{40};
    all.hardware.test_board = true;
    all.hardware.spoil = [&](std::vector<bool>& pins) { pins[30] = false; };
    run(all, true);
    EXPECT_EQ(all.count("continue"), static_cast<int>(all.report().faults.size()));
    EXPECT_EQ(all.report().faults[0].pin, 31);
}

TEST(a_lost_reply, ends_the_output_test_with_a_communication_error)
{
    for (const int k : {0, 1, 19, 20, 50, 95}) {
        selftest_bench b;
        b.hardware.test_board = true;
        b.hardware.replies_until_lost = k;
        run(b);
        EXPECT_EQ(b.report().result, selftest_result::communication_error);
        EXPECT_EQ(last_status(b), "Communication error!");
    }
}

TEST(a_refused_frame, ends_the_output_test_with_a_communication_error)
{
    for (int k = 0; k < 16; ++k) {
        selftest_bench b;
        b.hardware.test_board = true;
        b.hardware.writes_until_refused = k;
        run(b);
        EXPECT_EQ(b.report().result, selftest_result::communication_error);
    }
}

TEST(a_count_of_552, says_no_test_board_from_40_on)
{
    // The left column reads low: at level 1 each of 24 lines finds the 23 other pins of that side wrong.
    selftest_bench b{40};
    b.hardware.test_board = true;
    b.hardware.spoil = [](std::vector<bool>& pins) { std::fill(pins.begin(), pins.begin() + 24, false); };
    run(b);
    EXPECT_EQ(b.report().result, selftest_result::no_test_board);
    EXPECT_EQ(b.count("runstp"), 0);
}

}  // namespace
}  // namespace tamrix
