#include "channel/pin_map.h"

#include "base/errors.h"

#include <string>

namespace tamrix::hw {

namespace {

constexpr column_place left(std::size_t up) { return {.right = false, .up = up}; }
constexpr column_place right(std::size_t up) { return {.right = true, .up = up}; }

struct column_pair {
    std::array<column_place, crossed_rows> left, right;
};

/// The device's place at each place of the socket, from the bottom.
constexpr column_pair device_places{
    .left{right(0), left(1), left(2), left(3), left(7), left(6), left(5), left(4), right(8), right(6), right(9),
          right(10), right(14), left(15), right(13), left(14)},
    .right{right(1), right(2), right(3), right(4), left(8), left(9), left(10), left(11), left(12), right(11), right(12),
           left(13), right(5), right(7), right(15), left(0)}};

constexpr column_pair inverse_of(const column_pair& places)
{
    column_pair inverse{};
    const auto enter = [&](column_place from, column_place to) {
        (from.right ? inverse.right : inverse.left)[from.up] = to;
    };
    for (std::size_t up = 0; up < crossed_rows; ++up) {
        enter(places.left[up], left(up));
        enter(places.right[up], right(up));
    }
    return inverse;
}

constexpr column_pair socket_places = inverse_of(device_places);

constexpr column_place across(const column_pair& places, column_place from)
{
    if (from.up >= crossed_rows) return from;
    return (from.right ? places.right : places.left)[from.up];
}

}  // namespace

port_bit bit_of_position(int i, int half)
{
    const int down = half - 1 - i;  // positions above the bottom of the left column
    const int port = i < half ? down / 4 : (i - half) / 4;
    const int bit = i < half ? 3 - down % 4 : 4 + (i - half) % 4;
    if (i < 0 || port >= static_cast<int>(port_count))
        throw subscript_error{"no socket position for letter " + std::to_string(i + 1) + " of a vector"};
    return {.port = static_cast<std::size_t>(port), .mask = static_cast<std::uint8_t>(1 << bit)};
}

column_place device_place_at(column_place socket) { return across(device_places, socket); }

column_place socket_place_of(column_place device) { return across(socket_places, device); }

}  // namespace tamrix::hw
