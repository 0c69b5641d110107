// The frames that only programmers with modules know.
#include "channel/module_frames.h"

#include "module_programmer.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::unit_bench;

/// A selftest_bench whose frame buffer is full of 0xEE.
struct filled : unit_bench {
    filled()
    {
        for (int byte = 0; byte < 20; ++byte) session.blocks.ubuf1(byte) = 0xEE;
    }
};

TEST(a_module_frame, resets_or_starts_the_module_that_it_names_and_leaves_the_other_bytes)
{
    filled b;
    EXPECT_TRUE(hw::send_module_reset(b.session, 2));
    EXPECT_TRUE(hw::send_module_start(b.session, 3));
    EXPECT_EQ(b.transcript, (lines{"usbcomwrite 15: 04 AA 02 EE EE EE EE EE EE EE EE EE EE EE EE",
                                   "usbcomwrite 15: EC AA 03 EE EE EE EE EE EE EE EE EE EE EE EE"}));
}

TEST(a_module_frame, names_its_module_in_byte_8_of_a_bulk_frame)
{
    filled b;
    EXPECT_TRUE(hw::send_module_bulk_frame(b.session, {.block = 6,
                                                       .direction = hw::bulk_to_ram,
                                                       .memory = hw::module_memory::ram,
                                                       .stage = hw::module_stage::passing,
                                                       .slot = 4,
                                                       .length = hw::frame_length::self_test_pins}));
    EXPECT_TRUE(hw::send_module_bulk_frame(b.session, {.block = 16,
                                                       .direction = hw::bulk_to_ram,
                                                       .memory = hw::module_memory::image,
                                                       .stage = hw::module_stage::unit,
                                                       .slot = 1,
                                                       .length = hw::frame_length::large}));
    EXPECT_EQ(b.transcript, (lines{"usbcomwrite 15: 0A 06 80 01 AA EE EE EE 04 EE EE EE EE EE EE",
                                   "usbcomwrite 16: 0A 10 80 03 00 EE EE EE 01 EE EE EE EE EE EE EE"}));
}

TEST(a_module_frame, says_the_length_of_a_load_step_in_three_bytes)
{
    filled b;
    EXPECT_TRUE(hw::send_load_step(b.session, hw::load_direction::to_module, 65536));
    EXPECT_TRUE(hw::send_load_step(b.session, hw::load_direction::from_module, 32768));
    EXPECT_TRUE(hw::send_load_step(b.session, hw::load_direction::to_module, 100));
    EXPECT_EQ(b.transcript, (lines{"usbcomwrite 16: 5C 00 01 00 00 EE EE EE EE EE EE EE EE EE EE EE",
                                   "usbcomwrite 16: 5C 01 00 80 00 EE EE EE EE EE EE EE EE EE EE EE",
                                   "usbcomwrite 16: 5C 00 00 00 64 EE EE EE EE EE EE EE EE EE EE EE"}));
}

TEST(a_module_frame, signals_a_pass_and_a_failure_with_bytes_of_their_own)
{
    filled b;
    EXPECT_TRUE(hw::send_module_signal(b.session, 1, true));
    EXPECT_TRUE(hw::send_module_signal(b.session, 4, false));
    EXPECT_EQ(b.transcript,
              (lines{"usbcomwrite 9: 06 01 36 06 50 01 EE EE 01", "usbcomwrite 9: 06 02 36 01 FA 01 EE EE 04"}));
}

TEST(a_module_frame, that_is_refused_is_told)
{
    unit_bench b;
    b.modules.writes_until_refused = 0;
    EXPECT_FALSE(hw::send_module_reset(b.session, 1));
    EXPECT_FALSE(hw::send_module_start(b.session, 1));
    EXPECT_FALSE(hw::send_load_step(b.session, hw::load_direction::to_module, 1));
    EXPECT_FALSE(hw::send_module_signal(b.session, 1, true));
    EXPECT_FALSE(hw::send_module_bulk_frame(b.session, {.block = 0,
                                                        .direction = hw::bulk_to_ram,
                                                        .memory = hw::module_memory::ram,
                                                        .stage = hw::module_stage::unit,
                                                        .slot = 1,
                                                        .length = hw::frame_length::large}));
    EXPECT_EQ(b.session.blocks.prgresult(0), 1);
}

}  // namespace
}  // namespace tamrix
