#include "channel/pin_map.h"

#include "base/errors.h"
#include "ttl/run/slow_model.h"

#include <gtest/gtest.h>

#include <string>

namespace tamrix::tests {
namespace {

TEST(bit_of_position, on_14_pins_fills_the_lowest_places_of_the_socket)
{
    const auto at = [](int i) {
        const hw::port_bit bit = hw::bit_of_position(i, 7);
        return std::pair{bit.port, bit.mask};
    };
    EXPECT_EQ(at(6), (std::pair<std::size_t, std::uint8_t>{0, 1 << 3}));
    EXPECT_EQ(at(7), (std::pair<std::size_t, std::uint8_t>{0, 1 << 4}));
    EXPECT_EQ(at(0), (std::pair<std::size_t, std::uint8_t>{1, 1 << 1}));
    EXPECT_EQ(at(13), (std::pair<std::size_t, std::uint8_t>{1, 1 << 6}));
}

TEST(bit_of_position, is_the_place_of_the_pin_for_every_device)
{
    for (int pins = 2; pins <= 48; pins += 2) {
        for (int number = 1; number <= pins; ++number) {
            const slow::place expected = slow::place_of_pin(number, pins);
            const hw::port_bit bit = hw::bit_of_position(number - 1, pins / 2);
            EXPECT_EQ(bit.port, static_cast<std::size_t>(expected.group())) << number << " of " << pins;
            EXPECT_EQ(bit.mask, expected.weight()) << number << " of " << pins;
        }
    }
}

TEST(bit_of_position, a_pin_above_the_socket_is_an_error)
{
    EXPECT_THROW(hw::bit_of_position(0, 25), subscript_error);
    EXPECT_THROW(hw::bit_of_position(48, 24), subscript_error);
    EXPECT_THROW(hw::bit_of_position(-1, 0), subscript_error);
}

TEST(device_place_at, follows_the_wire_of_every_place_of_40)
{
    const auto wire = [](hw::column_place place) { return (place.right ? "B" : "A") + std::to_string(place.up); };
    for (std::size_t up = 0; up < 20; ++up) {
        EXPECT_EQ(wire(hw::device_place_at({false, up})), slow::left_wires[up]);
        EXPECT_EQ(wire(hw::device_place_at({true, up})), slow::right_wires[up]);
    }
}

TEST(socket_place_of, is_the_other_way_round)
{
    for (const bool right : {false, true}) {
        for (std::size_t up = 0; up < 20; ++up) {
            const hw::column_place place{right, up};
            EXPECT_EQ(hw::device_place_at(hw::socket_place_of(place)), place) << right << ' ' << up;
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
