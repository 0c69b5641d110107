// Where pins are: the one translation between a letter's position in a row and the bit of a port, for sockets of 48 and
// of 40 positions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tamrix::hw {

/// Eight socket positions a port: four of the left column in the low nibble, four of the right one in the high nibble;
/// port 0 is at the socket's bottom.
inline constexpr std::size_t port_count = 6;
using port_bytes = std::array<std::uint8_t, port_count>;

struct port_bit {
    std::size_t port;
    std::uint8_t mask;
};

/// The positions of a row, and how many of them are in the left column.
struct row_span {
    int positions, half;
};
constexpr row_span span_of_48(int pins) { return {.positions = pins, .half = pins / 2}; }
inline constexpr row_span span_of_40{.positions = 40, .half = 20};

/// The port and bit of position `i` of a row, from 0, with `half` positions in each column. Throws subscript_error for
/// a position outside the ports.
port_bit bit_of_position(int i, int half);

/// A place in one of the two columns, counted up from the bottom.
struct column_place {
    bool right;
    std::size_t up;

    bool operator==(const column_place&) const = default;
};

/// The lowest rows of the 40 positions are wired across; above them both columns run straight.
inline constexpr std::size_t crossed_rows = 16;

/// The place of a device whose pin is wired to this place of the 40 positions.
column_place device_place_at(column_place socket);
/// The other way round.
column_place socket_place_of(column_place device);

}  // namespace tamrix::hw
