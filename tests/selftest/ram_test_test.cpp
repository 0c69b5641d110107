// The RAM stage of the System Test.
#include "selftest/pinnote.h"

#include "selftest_bench.h"

#include <gtest/gtest.h>

#include <random>

namespace tamrix {
namespace {

using tests::lines;
using tests::selftest_bench;

lines ram_stage(selftest_bench& b)
{
    b.during([&](pinnote& dialog) {
        b.transcript.clear();
        dialog.testbutton.click();
    });
    const auto first = std::ranges::find(b.transcript, "status .Test RAM .....") + 1;
    return {first, std::ranges::find(b.transcript, "status Input Test....")};
}

std::string frame(int length, const std::string& bytes)
{
    std::string text = "usbcomwrite " + std::to_string(length) + ": " + bytes;
    for (auto i = static_cast<int>(bytes.size() + 1) / 3; i < length; ++i) text += " 00";
    return text;
}

/// The data that these writes carried are what the tests compare with, so their checksums are left away here.
lines without_checksums(lines calls)
{
    for (std::string& line : calls)
        if (line.starts_with("usbbulkwrite")) line = line.substr(0, line.find(':'));
    return calls;
}

TEST(small_ram, is_written_in_four_blocks_and_read_back)
{
    selftest_bench b;
    lines expected{"delayms 200", "usbcomwrite 4: 0A 00 80 00", "delayms 200"};
    for (int block = 0; block < 4; ++block) expected.emplace_back("usbbulkwrite 32768");
    for (int block = 0; block < 4; ++block) {
        expected.push_back(frame(8, "0A 0" + std::to_string(block) + " 40"));
        expected.emplace_back("usbbulkread 32769");
    }
    expected.insert(expected.end(), {frame(8, "0A 00 00"), "status  RAM level= 4", "delayms 5000"});
    EXPECT_EQ(without_checksums(ram_stage(b)), expected);
    EXPECT_EQ(b.session.blocks.rambknum(0), 4);
    EXPECT_EQ(b.session.blocks.ramlg(0), 131072);
}

TEST(large_ram, is_written_in_eight_blocks_and_read_in_sixteen)
{
    selftest_bench b{40};
    lines expected{frame(16, "09 01"), "replycheck 3", frame(16, "0A 00 80 01"), "delayms 20"};
    for (int block = 0; block < 8; ++block) expected.emplace_back("usbbulkwrite 65536");
    for (int block = 0; block < 16; ++block) {
        expected.push_back(frame(16, std::string{"0A 0"} + "0123456789ABCDEF"[block] + " 40 01"));
        expected.emplace_back("usbbulkread 32769");
    }
    expected.insert(expected.end(), {frame(16, "0A 00 00 01"), "status  RAM level= 16", "delayms 5000"});
    EXPECT_EQ(without_checksums(ram_stage(b)), expected);
    EXPECT_EQ(b.session.blocks.rambknum(0), 16);
    EXPECT_EQ(b.session.blocks.ramlg(0), 524288);
}

TEST(large_ram, of_a_programmer_with_the_smaller_one_is_one_block)
{
    selftest_bench b{40};
    b.hardware.large_ram = false;
    EXPECT_EQ(without_checksums(ram_stage(b)),
              (lines{frame(16, "09 01"), "replycheck 3", frame(16, "09 00"), "replycheck 3", frame(16, "0A 00 80"),
                     "delayms 20", "usbbulkwrite 32768", frame(16, "0A 00 40"), "usbbulkread 32769",
                     frame(16, "0A 00 00"), "status  RAM level= 1", "delayms 5000"}));
    EXPECT_EQ(b.report().result, selftest_result::passed);
}

TEST(ram_tests, write_bytes_that_are_the_highest_eight_bits_of_each_draw)
{
    selftest_bench b;
    ram_stage(b);
    std::mt19937 draw{1};
    for (int i = 0; i < 131072; ++i) ASSERT_EQ(b.hardware.ram[static_cast<std::size_t>(i)], draw() >> 24) << i;
}

TEST(ram_tests, take_a_new_seed_at_every_run)
{
    selftest_bench b;
    ram_stage(b);
    const std::uint8_t first = b.hardware.ram[0];
    ram_stage(b);
    EXPECT_EQ(b.starts, 2u);
    EXPECT_EQ(b.hardware.ram[0], std::mt19937{2}() >> 24);
    EXPECT_NE(b.hardware.ram[0], first);
}

TEST(a_bad_block_of_ram, lowers_the_level_and_does_not_fail_the_run)
{
    for (const std::int16_t model : {1, 40}) {
        for (int block = 0; block < (model == 1 ? 4 : 16); ++block) {
            selftest_bench b{model};
            b.hardware.bad_blocks = {block};
            const lines calls = ram_stage(b);
            const int good = model == 1 ? 3 : 15;
            EXPECT_EQ(calls[calls.size() - 2], "status  RAM level= " + std::to_string(good));
            EXPECT_EQ(b.session.blocks.rambknum(0), good);
            EXPECT_EQ(b.session.blocks.ramlg(0), good * 32768);
            EXPECT_EQ(b.report().result, selftest_result::passed);
            ASSERT_EQ(b.report().faults.size(), 1u);
            EXPECT_EQ(b.report().faults[0].stage, selftest_stage::ram);
            EXPECT_EQ(b.report().faults[0].place, block);
            EXPECT_EQ(b.report().faults[0].expected ^ 1, b.report().faults[0].read);
        }
    }
}

TEST(ram_without_a_good_block, leaves_256_bytes_and_not_none)
{
    selftest_bench b;
    b.hardware.bad_blocks = {0, 1, 2, 3};
    ram_stage(b);
    EXPECT_EQ(b.session.blocks.rambknum(0), 0);
    EXPECT_EQ(b.session.blocks.ramlg(0), 256);
}

TEST(a_block_that_is_never_read, ends_the_ram_test_after_8_seconds)
{
    selftest_bench b;
    b.hardware.reads_end = false;
    b.shell.on_doevents = [&] { b.shell.advance(1); };
    const lines calls = ram_stage(b);
    EXPECT_EQ(std::ranges::count(calls, "usbbulkread 32769"), 1);
    EXPECT_GE(b.shell.seconds(), 8);
    EXPECT_LT(b.shell.seconds(), 30) << "each status takes a round of the pump too";
    EXPECT_EQ(calls[calls.size() - 3], frame(8, "0A 00 00")) << "the transfers are ended";
    EXPECT_EQ(b.session.blocks.ramlg(0), 256);
    ASSERT_EQ(b.report().faults.size(), 1u);
}

TEST(a_write_that_is_refused, of_a_question_for_the_ram_waits_for_no_reply)
{
    selftest_bench b{40};
    b.hardware.writes_until_refused = 0;
    b.during([](pinnote& dialog) { dialog.testbutton.click(); });
    EXPECT_EQ(b.count("usbcomwrite 16: 09"), 2) << "for the larger one and for the smaller one";
    EXPECT_EQ(b.count("replycheck"), 0);
}

TEST(a_write_that_is_refused, at_the_start_of_the_small_ram_skips_the_blocks)
{
    selftest_bench b;
    b.hardware.writes_until_refused = 0;
    const lines calls = ram_stage(b);
    EXPECT_EQ(std::ranges::count_if(calls, [](const auto& line) { return line.starts_with("usbbulk"); }), 0);
    EXPECT_EQ(calls[2], "delayms 200");
}

}  // namespace
}  // namespace tamrix
