#include "channel/frames.h"

#include "channel/recorded.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

TEST(send_pin_frame, alternates_outputs_and_companions_in_every_length)
{
    recorded r;
    const hw::port_bytes outputs{1, 2, 3, 4, 5, 6}, companions{0x11, 0x12, 0x13, 0x14, 0x15, 0x16};
    for (const auto length : {hw::frame_length::logic_pins, hw::frame_length::self_test_pins, hw::frame_length::large})
        EXPECT_TRUE(hw::send_pin_frame(r.session, outputs, companions, length));
    EXPECT_EQ(r.log.text(), "usbcomwrite 13: 05 01 11 02 12 03 13 04 14 05 15 06 16\n"
                            "usbcomwrite 15: 05 01 11 02 12 03 13 04 14 05 15 06 16 CC CC\n"
                            "usbcomwrite 16: 05 01 11 02 12 03 13 04 14 05 15 06 16 CC CC CC\n");
}

TEST(send_bulk_frame, sets_three_bytes_and_leaves_the_others)
{
    recorded r;
    EXPECT_TRUE(hw::send_bulk_frame(r.session, 3, hw::bulk_from_ram, hw::frame_length::bulk));
    EXPECT_TRUE(hw::send_bulk_frame(r.session, 0, hw::bulk_to_ram, hw::frame_length::write_start_of_small_ram));
    EXPECT_TRUE(hw::end_bulk(r.session, hw::frame_length::large));
    EXPECT_EQ(r.log.text(), "usbcomwrite 8: 0A 03 40 CC CC CC CC CC\n"
                            "usbcomwrite 4: 0A 00 80 CC\n"
                            "usbcomwrite 16: 0A 00 00 CC CC CC CC CC CC CC CC CC CC CC CC CC\n");
}

TEST(send_script_frame, is_a_bulk_frame_of_a_block_of_its_own)
{
    recorded r;
    EXPECT_TRUE(hw::send_script_frame(r.session));
    EXPECT_EQ(r.log.text(), "usbcomwrite 8: 0A 10 40 CC CC CC CC CC\n");
}

TEST(frames, a_refused_one_is_told_by_every_builder)
{
    recorded r;
    r.log.usbcomwrite_results = {1, 1, 1};
    EXPECT_FALSE(hw::send_pin_frame(r.session, {}, {}, hw::frame_length::logic_pins));
    EXPECT_FALSE(hw::end_bulk(r.session, hw::frame_length::bulk));
    EXPECT_FALSE(hw::send_script_frame(r.session));
    EXPECT_EQ(r.session.blocks.prgresult(0), 1);
}

TEST(frames, have_a_length_and_a_slot_byte_for_each_sender)
{
    const auto bytes = [](hw::frame_length length) { return static_cast<int>(length); };
    EXPECT_EQ(bytes(hw::frame_length::write_start_of_small_ram), 4);
    EXPECT_EQ(bytes(hw::frame_length::analyzer), 5);
    EXPECT_EQ(bytes(hw::frame_length::bulk), 8);
    EXPECT_EQ(bytes(hw::frame_length::module_signal), 9);
    EXPECT_EQ(bytes(hw::frame_length::logic_pins), 13);
    EXPECT_EQ(bytes(hw::frame_length::self_test_pins), 15);
    EXPECT_EQ(bytes(hw::frame_length::large), 16);
    EXPECT_EQ(hw::slot_byte_of_bulk_frame, 8);
    EXPECT_EQ(hw::slot_byte_of_pin_frame, 15);
}

}  // namespace
}  // namespace tamrix::tests
