// The RAM of a module.
#include "selftest/ramcheck_lm4.h"

#include "module_programmer.h"

#include <gtest/gtest.h>

#include <random>

namespace tamrix {
namespace {

using tests::lines;
using tests::unit_bench;

int check(unit_bench& b, std::int16_t slot = 3)
{
    int good = -1;
    b.with_dialog([&](pinnote204& dialog) { good = ramcheck_lm4(dialog, slot); });
    return good;
}

const char* const end_of_test = "usbcomwrite 16: 0A 00 00 01 00 00 00 00 03 00 00 00 00 00 00 00";

TEST(ramcheck_lm4, finds_sixteen_good_blocks_in_a_sound_module)
{
    unit_bench b;
    EXPECT_EQ(check(b), 16);
    EXPECT_TRUE(b.report().faults.empty());
    EXPECT_EQ(b.transcript.back(), end_of_test);
}

TEST(ramcheck_lm4, leaves_the_random_bytes_of_its_second_writing_in_the_module)
{
    unit_bench b;
    check(b);
    std::mt19937 draw{1};
    for (const std::uint8_t byte : b.slot(3).ram) ASSERT_EQ(byte, draw() >> 24);
}

TEST(ramcheck_lm4, writes_through_the_unit_and_then_into_the_passages_that_it_has_opened)
{
    unit_bench b;
    check(b);
    EXPECT_EQ((lines{b.transcript.begin(), b.transcript.begin() + 4}),
              (lines{"usbcomwrite 15: 0A 00 80 01 00 00 00 00 03 00 00 00 00 00 00", "delayms 100",
                     "usbbulkwrite 65536: crc " + b.transcript[2].substr(24), "delayms 100"}));
    const auto passage = b.transcript.begin() + 18;
    EXPECT_EQ((lines{passage, passage + 7}),
              (lines{"usbcomwrite 15: 0A 00 80 01 AA 00 00 00 03 00 00 00 00 00 00", "delayms 500",
                     "usbcomwrite 16: 5C 00 01 00 00 00 00 00 03 00 00 00 00 00 00 00",
                     "status2 Pass data to the programmer ......0  ", "replycheck 5", "delayms 1000",
                     "usbcomwrite 15: 0A 02 80 01 AA 00 00 00 03 00 00 00 00 00 00"}));
    EXPECT_EQ(b.count("usbbulkwrite 65536"), 16);
}

TEST(ramcheck_lm4, fetches_each_block_into_the_unit_before_it_reads_it)
{
    unit_bench b;
    check(b);
    const auto last = b.transcript.begin() + b.place_of("usbcomwrite 15: 0A 0F 40");
    EXPECT_EQ(
        (lines{last, b.transcript.end()}),
        (lines{"usbcomwrite 15: 0A 0F 40 01 AA 00 00 00 03 00 00 00 00 00 00", "delayms 50",
               "usbcomwrite 16: 5C 01 00 80 00 00 00 00 03 00 00 00 00 00 00 00",
               "status2 Data is read from the programmer......15  ", "replycheck 5",
               "usbcomwrite 16: 0A 0F 40 01 00 00 00 00 03 00 00 00 00 00 00 00", "usbbulkread 32769", end_of_test}));
}

TEST(ramcheck_lm4, counts_no_bad_block_and_says_which_it_is)
{
    unit_bench b;
    b.slot(3).bad_blocks = {0, 15};
    EXPECT_EQ(check(b), 14);
    ASSERT_EQ(b.report().faults.size(), 2u);
    const selftest_fault& last = b.report().faults[1];
    EXPECT_EQ(last.slot, 3);
    EXPECT_EQ(last.place, 15);
    EXPECT_EQ(last.expected ^ last.read, 1);
    EXPECT_EQ(words_of(last).substr(0, 22), "module 3 RAM block 15:");
}

TEST(ramcheck_lm4, ends_with_what_it_has_counted_where_a_read_does_not_end)
{
    unit_bench b;
    b.modules.reads_until_lost = 5;
    b.shell.on_doevents = [&] { b.shell.advance(0.5); };
    EXPECT_EQ(check(b), 5);
    EXPECT_EQ(b.count("usbbulkread"), 6);
    EXPECT_EQ(b.transcript.back(), end_of_test);
    ASSERT_EQ(b.report().faults.size(), 1u);
    EXPECT_EQ(b.report().faults[0].place, 5);
}

TEST(ramcheck_lm4, ends_where_a_frame_or_a_block_is_refused)
{
    // The writes in order: a frame, 8 blocks, 8 times 2 frames, 8 blocks, 16 times 3 frames.
    for (const int taken : {0, 1, 8, 9, 10, 24, 25, 32}) {
        unit_bench b;
        b.modules.writes_until_refused = taken;
        EXPECT_EQ(check(b), 0) << taken;
        EXPECT_EQ(b.modules.taken, taken + 2) << "the refused one, and the end";
        EXPECT_EQ(b.report().faults, (std::vector<selftest_fault>{{.stage = selftest_stage::ram, .slot = 3}}));
    }
    for (const int taken : {33, 34, 35, 36 + 14 * 3 + 2}) {
        unit_bench b;
        b.modules.writes_until_refused = taken;
        EXPECT_EQ(check(b), (taken - 33) / 3) << taken;
        EXPECT_EQ(b.modules.taken, taken + 2);
        EXPECT_EQ(b.report().faults.size(), 1u);
    }
}

TEST(ramcheck_lm4, goes_no_further_once_the_dialog_is_closed)
{
    unit_bench b;
    b.with_dialog([&](pinnote204& dialog) {
        b.shell.on_doevents = [&] {
            if (b.count("usbbulkread") == 3) dialog.ask_to_leave();
        };
        EXPECT_EQ(ramcheck_lm4(dialog, 3), 3);
    });
    EXPECT_EQ(b.count("usbbulkread"), 3);
}

TEST(ramcheck_lm4, opens_no_further_passage_once_the_dialog_is_closed)
{
    unit_bench b;
    b.with_dialog([&](pinnote204& dialog) {
        b.shell.on_doevents = [&] {
            if (b.count("status2 Pass data") == 2) dialog.ask_to_leave();
        };
        dialog.testbutton.click();
    });
    EXPECT_EQ(b.count("status2 Pass data"), 2);
    EXPECT_EQ(b.count("usbcomwrite 16: 5C"), 2);
    EXPECT_TRUE(b.report().faults.empty()) << "it is no fault of the memory";
    EXPECT_EQ(b.report().result, selftest_result::stopped);
}

}  // namespace
}  // namespace tamrix
