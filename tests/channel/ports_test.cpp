#include "channel/ports.h"

#include "channel/recorded.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using route = hw::ports::route;

const hw::port_bytes data{1, 2, 3, 4, 5, 6}, other_data{7, 8, 9, 10, 11, 12}, masks{0x11, 0x12, 0x13, 0x14, 0x15, 0x16};

/// What the programmer sees of ports that are driven, driven with other data, and released.
std::string driven(route by)
{
    recorded r;
    hw::ports ports{r.session, by, hw::frame_length::logic_pins};
    EXPECT_TRUE(ports.drive(data, masks));
    EXPECT_TRUE(ports.drive_data(other_data));
    EXPECT_TRUE(ports.release());
    return r.log.text();
}

TEST(ports, by_frames_are_driven_by_one_frame_that_repeats_the_masks)
{
    EXPECT_EQ(driven(route::frames), "usbcomwrite 13: 05 01 11 02 12 03 13 04 14 05 15 06 16\n"
                                     "usbcomwrite 13: 05 07 11 08 12 09 13 0A 14 0B 15 0C 16\n"
                                     "usbcomwrite 13: 05 FF FF FF FF FF FF FF FF FF FF FF FF\n");
}

TEST(ports, by_registers_are_driven_port_by_port_and_keep_their_masks)
{
    EXPECT_EQ(driven(route::registers),
              "regout 1 0\nregout 17 1\nregout 2 2\nregout 18 3\nregout 3 4\nregout 19 5\n"
              "regout 4 6\nregout 20 7\nregout 5 8\nregout 21 9\nregout 6 10\nregout 22 11\n"
              "regout 7 0\nregout 8 2\nregout 9 4\nregout 10 6\nregout 11 8\nregout 12 10\n"
              "regout 255 1\nregout 255 0\nregout 255 3\nregout 255 2\nregout 255 5\nregout 255 4\n"
              "regout 255 7\nregout 255 6\nregout 255 9\nregout 255 8\nregout 255 11\nregout 255 10\n");
}

TEST(ports, are_read_alike_on_both_routes)
{
    for (const route by : {route::frames, route::registers}) {
        recorded r;
        r.log.socket = {{0xA0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5}};
        hw::ports ports{r.session, by, hw::frame_length::logic_pins};
        hw::port_bytes pins{};
        EXPECT_TRUE(ports.read(pins));
        EXPECT_EQ(pins, (hw::port_bytes{0xA0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5}));
        EXPECT_EQ(r.log.count("replywait 3 0 0"), by == route::frames ? 1 : 0);
        EXPECT_EQ(r.log.count("regin"), by == route::frames ? 0 : 6);
    }
}

TEST(ports, say_when_a_frame_is_refused_or_its_reply_is_lost)
{
    recorded r;
    hw::ports ports{r.session, route::frames, hw::frame_length::logic_pins};
    r.log.usbcomwrite_results = {1, 1, 1};
    EXPECT_FALSE(ports.drive(data, masks));
    EXPECT_FALSE(ports.drive_data(data));
    EXPECT_FALSE(ports.release());
    r.log.replywait_results = {false};
    hw::port_bytes pins{};
    EXPECT_FALSE(ports.read(pins));
    EXPECT_EQ(pins, hw::port_bytes{});
}

}  // namespace
}  // namespace tamrix::tests
