// The registers of the function boards.
#include "selftest/pinnote.h"

#include "selftest_bench.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::selftest_bench;

/// The calls of the register stage.
lines register_stage(selftest_bench& b)
{
    b.during([&](pinnote& dialog) {
        b.at_wait = [&] { dialog.testbutton.click(); };
        b.transcript.clear();
        dialog.testbutton.click();
    });
    return {std::ranges::find(b.transcript, "regout 0 11"), b.transcript.end()};
}

std::string boards(const lines& calls)
{
    std::string all;
    for (const std::string& line : calls)
        if (line.starts_with("boardsel ")) all += line.substr(8);
    return all;
}

TEST(register_test, visits_the_boards_of_the_model)
{
    const std::string to_7 = " 0 1 2 3 4 5 6 7", without_3_and_4 = " 0 1 2 5 6 7";
    const auto visited = [](std::int16_t model, bool usb = true, std::uint8_t wfig = 0) {
        selftest_bench b{model, wfig, usb};
        return boards(register_stage(b));
    };
    EXPECT_EQ(visited(1), without_3_and_4 + " 8 9 10 11 12 13 14");
    EXPECT_EQ(visited(2, false), without_3_and_4 + " 8 9 10 11 12 13 14");
    for (const std::int16_t model : {0, 2, 3, 4})
        EXPECT_EQ(visited(model), without_3_and_4 + " 8 9 10 11 12 13 14 15 16") << model;
    for (const std::int16_t model : {9, 10, 13, 14})
        EXPECT_EQ(visited(model), to_7 + " 8 9 10 11 12 13 14 15 16") << model;
    for (const std::int16_t model : {5, 6, 7, 8}) EXPECT_EQ(visited(model), without_3_and_4) << model;
    for (const std::int16_t model : {15, 16, 17, 18}) EXPECT_EQ(visited(model), to_7) << model;
    for (const std::int16_t model : {19, 22, 30, 38}) EXPECT_EQ(visited(model), " 0") << model;
    for (const int wfig : {16, 17, 31}) EXPECT_EQ(visited(5, true, static_cast<std::uint8_t>(wfig)), " 0 1 2 5 6");
    for (const int wfig : {15, 32}) EXPECT_EQ(visited(5, true, static_cast<std::uint8_t>(wfig)), without_3_and_4);
}

TEST(register_test, writes_zeros_and_then_ones_in_the_read_back_state)
{
    selftest_bench by_usb{19};
    const std::string zeros = "usbcomwrite 15: 05 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    const std::string ones = "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00 00";
    EXPECT_EQ(register_stage(by_usb), (lines{"regout 0 11", "hwreset", "boardsel 0", "busmode 0", zeros, "delayms 1",
                                             "replywait 3 0 0", "busmode 1", ones, "delayms 1", "replywait 3 0 0",
                                             "hwrelease", "status", "status System Test OK!", "beep"}));
    selftest_bench by_registers{19, 0, false};
    EXPECT_EQ(register_stage(by_registers),
              (lines{"regout 0 11",  "hwreset",    "boardsel 0",   "busmode 0",
                     "regout 0 3",   "regout 0 2", "regout 0 5",   "regout 0 4",
                     "regout 0 7",   "regout 0 6", "regout 0 9",   "regout 0 8",
                     "regin 2",      "regin 4",    "regin 6",      "regin 8",
                     "busmode 1",    "regout 0 3", "regout 255 2", "regout 0 5",
                     "regout 255 4", "regout 0 7", "regout 255 6", "regout 0 9",
                     "regout 255 8", "regin 2",    "regin 4",      "regin 6",
                     "regin 8",      "hwrelease",  "status",       "status System Test OK!",
                     "beep"}));
}

TEST(register_test, reads_as_many_registers_as_a_board_has)
{
    selftest_bench b{9, 0, false};
    const lines calls = register_stage(b);
    std::string counts;
    for (int board = 0; board <= 16; ++board) {
        const auto from = std::ranges::find(calls, "boardsel " + std::to_string(board));
        const auto to = std::find(from, calls.end(), "busmode 1");
        counts += std::to_string(std::count_if(from, to, [](const auto& line) { return line.starts_with("regin"); }));
    }
    EXPECT_EQ(counts, "40420025532222050");
}

TEST(a_register_that_reads_wrong, is_said_with_its_board_its_number_and_what_was_read)
{
    for (const bool usb : {true, false}) {
        selftest_bench b{9, 0, usb};
        b.hardware.spoil_register = [](int board, int reg, int value) { return board == 8 && reg == 2 ? 0xEF : value; };
        const lines calls = register_stage(b);
        EXPECT_EQ(std::ranges::count(calls, "status Device Test Fail!Address:812EF"), 1) << "ten more for ones";
        ASSERT_EQ(b.report().faults.size(), 1u);
        EXPECT_EQ(words_of(b.report().faults[0]), "board 8 register 2: expected FF, read EF");
        EXPECT_EQ(boards(calls), " 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16") << "Continue goes on with the next board";
        EXPECT_EQ(b.report().result, selftest_result::failed);
    }
}

TEST(a_register_that_keeps_a_zero_wrong, ends_its_board_before_the_ones)
{
    selftest_bench b{19};
    bool in_stage = false;
    b.hardware.spoil = [&](std::vector<bool>& pins) {
        in_stage = b.count("regout 0 11") > 0;
        if (in_stage) pins[12] = true;  // register 2, bit 0
    };
    const lines calls = register_stage(b);
    EXPECT_EQ(std::ranges::count(calls, "status Device Test Fail!Address:021"), 1);
    EXPECT_EQ(std::ranges::count(calls, "busmode 1"), 0);
    EXPECT_EQ(words_of(b.report().faults.at(0)), "board 0 register 2: expected 0, read 1");
}

TEST(test_of_registers, is_not_made_from_40_on)
{
    selftest_bench b{40};
    b.during([&](pinnote& dialog) { dialog.testbutton.click(); });
    EXPECT_EQ(b.count("regout 0 11") + b.count("hwrelease"), 0);
}

}  // namespace
}  // namespace tamrix
