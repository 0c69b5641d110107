// The Output Tests of a unit with four modules, through a board that the person moves from module to module.
#include "module_programmer.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::unit_bench;

const std::string signal_pass = "usbcomwrite 9: 06 01 36 06 50 01", signal_fail = "usbcomwrite 9: 06 02 36 01 FA 01";
using signals = std::vector<std::pair<int, bool>>;

/// The output byte and the mask of the first frame of each sweep of a module.
lines sweeps_of(const unit_bench& b, int slot)
{
    lines found;
    bool first = true;
    for (const std::string& line : b.transcript) {
        if (!line.starts_with("usbcomwrite 16: 05") || line.back() - '0' != slot) continue;
        if (first) found.push_back(line.substr(19, 5));
        first = !first;
    }
    return found;
}

TEST(the_output_test_of_modules, passes_module_by_module_where_the_board_is_moved)
{
    for (const bool usb : {true, false}) {
        for (const int option : {6, 7}) {
            unit_bench b{39, 0, usb};
            b.insert_test_boards();
            b.run(option);
            lines expected;
            for (const std::string number : {"1", "2", "3", "4"}) {
                if (number != "1") expected.push_back("( No " + number);
                expected.emplace_back(".Output Test.....");
                expected.push_back("Output Test OK! ( No " + number);
            }
            EXPECT_EQ(b.statuses(), expected);
            EXPECT_EQ(b.report().result, selftest_result::passed);
            EXPECT_TRUE(b.report().faults.empty());
            EXPECT_EQ(b.modules.signals, (signals{{1, true}, {2, true}, {3, true}, {4, true}}));
            EXPECT_EQ(b.count("runstp"), 3) << "for the board";
            EXPECT_EQ(b.transcript.back(), "beep");
        }
    }
}

TEST(the_output_test_of_modules, starts_each_module_and_prepares_its_board)
{
    unit_bench b;
    b.insert_test_boards();
    b.run(6);
    EXPECT_EQ((lines{b.transcript.begin(), b.transcript.begin() + 10}),
              (lines{"usbcomwrite 15: 04 AA 01 00 00 00 00 00 00 00 00 00 00 00 00", "delayms 500",
                     "usbcomwrite 15: EC AA 01 00 00 00 00 00 00 00 00 00 00 00 00", "delayms 500", "boardsel2 0 3",
                     "status .Output Test.....", "boardsel2 7 0", "setvcc 5000", "delayms 100",
                     "usbcomwrite 16: 05 FF F0 FF F0 FF F0 FF F0 FF F0 FF F0 00 00 01"}));
    EXPECT_EQ(b.count("boardsel2 0 3"), 4);
    EXPECT_EQ(b.count("usbcomwrite 15: 04"), 4);
}

TEST(the_output_test_of_modules, begins_with_the_other_level_in_the_form_for_isp)
{
    unit_bench high;
    high.insert_test_boards();
    high.run(6);
    unit_bench low;
    low.insert_test_boards();
    low.run(7);
    for (int slot = 1; slot <= 4; ++slot) {
        EXPECT_EQ(sweeps_of(high, slot), (lines{"FF F0", "00 F0", "00 0F", "FF 0F"}));
        EXPECT_EQ(sweeps_of(low, slot), (lines{"00 F0", "FF F0", "FF 0F", "00 0F"}));
    }
}

TEST(the_output_test_of_modules, names_the_module_without_a_board_and_asks_about_nothing_there)
{
    unit_bench b;
    b.insert_test_boards();
    b.slot(2).test_board = false;
    b.run(6);
    const lines texts = b.statuses();
    EXPECT_EQ(texts[4], "Error! No \"Test Board\" On Socket! ( No 2");
    EXPECT_EQ(texts.back(), "Output Test OK! ( No 4");
    EXPECT_EQ(b.count("runstp"), 3);
    EXPECT_EQ(b.modules.signals, (signals{{1, true}, {2, false}, {3, true}, {4, true}}));
    EXPECT_EQ(b.report().result, selftest_result::no_test_board);
}

/// The link of one line open, where pins float low.
void open_line(unit_bench& b, int slot, std::size_t lamp)
{
    b.hardware.spoil = [&b, slot, lamp](std::vector<bool>& pins) {
        if (b.modules.named == slot && (b.hardware.masks[5] & 0xF0) != 0) pins[47 - lamp] = pins[0];
    };
}

TEST(the_output_test_of_modules, fails_at_the_module_with_a_fault_and_passes_the_next_ones)
{
    unit_bench b;
    b.insert_test_boards();
    open_line(b, 2, 7);
    b.run(6);
    lines results;
    for (const std::string& text : b.statuses())
        if (text.starts_with("Output Test")) results.push_back(text);
    EXPECT_EQ(results, (lines{"Output Test OK! ( No 1", "Output Test fail!", "Output Test OK! ( No 3",
                              "Output Test OK! ( No 4"}));
    EXPECT_EQ(b.modules.signals, (signals{{1, true}, {2, false}, {3, true}, {4, true}}));
    EXPECT_EQ(b.report().result, selftest_result::failed);
    ASSERT_FALSE(b.report().faults.empty());
    EXPECT_EQ(b.report().faults[0].slot, 2);
}

TEST(the_output_test_of_modules, fails_for_a_fault_of_the_last_module_too)
{
    unit_bench b;
    b.insert_test_boards();
    open_line(b, 4, 7);
    b.run(6);
    EXPECT_EQ(b.statuses().back(), "Output Test fail!");
    EXPECT_EQ(b.modules.signals.back(), (std::pair{4, false}));
    EXPECT_EQ(b.report().result, selftest_result::failed);
}

TEST(the_output_test_of_modules, has_a_fault_as_its_result_rather_than_a_missing_board)
{
    for (const int without_board : {1, 3}) {
        unit_bench b;
        b.insert_test_boards();
        open_line(b, 2, 7);
        b.slot(without_board).test_board = false;
        b.run(6);
        EXPECT_EQ(b.report().result, selftest_result::failed) << without_board;
    }
}

TEST(stop_while_the_board_is_moved, ends_the_run_as_failed)
{
    unit_bench b;
    b.insert_test_boards();
    b.run(6, false);
    EXPECT_EQ((lines{b.transcript.end() - 9, b.transcript.end()}),
              (lines{"status ( No 2", "beep", "runstp", "stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset",
                     "status Output Test fail!", "beep"}));
    EXPECT_EQ(b.report().result, selftest_result::stopped);
}

TEST(stop_at_a_fault_of_a_module, ends_the_run_without_another_frame)
{
    unit_bench b;
    b.insert_test_boards();
    open_line(b, 1, 7);
    b.run(6, false);
    EXPECT_EQ((lines{b.transcript.end() - 6, b.transcript.end()}),
              (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset", "status Output Test fail!", "beep"}));
    EXPECT_EQ(b.report().result, selftest_result::stopped);
    EXPECT_TRUE(b.modules.signals.empty());
}

TEST(leaving_the_output_test, sends_the_signal_of_a_pass_once)
{
    unit_bench b;
    b.insert_test_boards();
    b.slot(4).test_board = false;
    b.with_dialog([&](pinnote204& dialog) {
        b.at_wait = [&] { dialog.testbutton.click(); };
        dialog.Option1(6).click();
        dialog.testbutton.click();
        b.modules.signals.clear();
        dialog.Option1(6).click();
        EXPECT_TRUE(b.modules.signals.empty()) << "it is not left";
        dialog.Option1(0).click();
        EXPECT_EQ(b.modules.signals, (signals{{4, true}}));
        dialog.Option1(6).click();
        dialog.Option1(1).click();
        EXPECT_EQ(b.modules.signals.size(), 1u) << "nothing has run since";
    });
}

TEST(a_lost_reply_in_the_output_test_of_modules, ends_it)
{
    unit_bench b;
    b.insert_test_boards();
    b.hardware.replies_until_lost = 100;
    b.run(6);
    EXPECT_EQ(b.report().result, selftest_result::communication_error);
    EXPECT_EQ(b.statuses().back(), "Communication error!");
    EXPECT_EQ(b.modules.signals, (signals{{1, true}}));
}

}  // namespace
}  // namespace tamrix
