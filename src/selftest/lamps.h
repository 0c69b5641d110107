// The lamps of a drawn socket: their colours, and which bit of which port each shows.
#pragma once

#include "forms/canvas.h"

#include <cstdint>

namespace tamrix::lamps {

inline constexpr forms::colour white = 0xFFFFFF, black = 0x000000, blue = 0x0000FF, red = 0xFF0000, cyan = 0x00FFFF,
                               green = 0x00FF00, yellow = 0xFFFF00, magenta = 0xFF00FF;

/// Lamps are numbered from 0, down the left column of 48 positions and up the right one. The forms of 40 positions use
/// the numbers 4 to 43.
inline constexpr int count = 48;

/// The lamp of bit 0 to 7 of port 0 to 5. Port 0 is at the socket's bottom, its low nibble on the left.
constexpr int of_bit(int port, int bit) { return 20 + bit + 4 * port * (2 * (bit / 4) - 1); }

struct port_bit {
    int port, bit;
};

/// The other way round, for lamps 0 to 47.
constexpr port_bit bit_of(int lamp)
{
    const bool right = lamp >= count / 2;
    const int port = right ? (lamp - count / 2) / 4 : 5 - lamp / 4;
    return {.port = port, .bit = right ? 4 + (lamp - count / 2) % 4 : lamp % 4};
}

/// A socket as it is drawn: its first lamp is pin 1.
struct socket {
    int first_lamp, pins;

    constexpr int pin_of(int lamp) const { return lamp - first_lamp + 1; }
    constexpr bool has(int lamp) const { return lamp >= first_lamp && lamp < first_lamp + pins; }
};
inline constexpr socket socket_of_48{.first_lamp = 0, .pins = 48}, socket_of_40{.first_lamp = 4, .pins = 40};

}  // namespace tamrix::lamps
