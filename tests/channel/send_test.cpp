#include "channel/send.h"

#include "channel/channel.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

TEST(send, takes_the_frame_as_it_stands_with_the_bytes_of_the_frame_before)
{
    channel c;
    auto& frame = c.session.blocks.ubuf1;
    for (int i = 0; i < 15; ++i) frame(i) = static_cast<std::uint8_t>(0x10 + i);
    frame(0) = 9;
    frame(1) = 0;
    EXPECT_TRUE(hw::send(c.session, hw::frame_length::bulk));
    EXPECT_EQ(c.log->transcript(), "usbcomwrite 8: 09 00 12 13 14 15 16 17\n");
    EXPECT_EQ(c.prgresult(), 0);
}

TEST(send, keeps_a_failure_in_prgresult)
{
    channel c;
    c.faults = {"no answer"};
    EXPECT_FALSE(hw::send(c.session, hw::frame_length::logic_pins));
    EXPECT_EQ(c.prgresult(), 1);
}

TEST(send, clears_a_time_out_that_stood_before)
{
    channel c;
    c.session.blocks.prgresult(0) = 3;
    c.session.blocks.ubuf1(0) = 9;
    EXPECT_TRUE(hw::send(c.session, hw::frame_length::logic_pins));
    EXPECT_EQ(c.prgresult(), 0);
}

TEST(send, refuses_a_length_that_the_block_has_not)
{
    channel c;
    EXPECT_THROW(hw::send(c.session, hw::frame_length{21}), subscript_error);
    EXPECT_THROW(hw::send(c.session, hw::frame_length{0}), subscript_error);
    EXPECT_THROW(hw::send(c.session, hw::frame_length{-5}), subscript_error);
    EXPECT_EQ(c.programmer, nullptr);
}

TEST(send, says_so_where_no_programmer_is_attached)
{
    plug_in_fixture f;
    EXPECT_THROW(hw::send(f.session, hw::frame_length::logic_pins), hw::programmer_error);
}

}  // namespace
}  // namespace tamrix::tests
