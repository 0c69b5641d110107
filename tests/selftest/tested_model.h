// What one model takes part in, and how its pins are read.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace tamrix::tests {

/// A set of places. A place is 8 * port + bit, in the order in which a test looks at them.
using places = std::uint64_t;
inline constexpr int most_pins = 48, all_places = 48;

constexpr places place_set(int place) { return places{1} << place; }
constexpr places port_set(int port) { return places{0xFF} << 8 * port; }
/// The board joins the lines of the bits b and 7 - b of a port.
constexpr int partner_of(int place) { return place ^ 7; }
inline constexpr places every_place = (places{1} << all_places) - 1, left_places = 0x0F0F0F0F0F0F,
                        outermost_places = port_set(5);

/// Four lines of each column a port, from the socket's bottom; line 0 is at the top of the left column, 24 at the
/// bottom of the right one.
constexpr int place_of_line(int line)
{
    return line < 24 ? 8 * (5 - line / 4) + line % 4 : 8 * ((line - 24) / 4) + 4 + line % 4;
}

struct socket_of_pins {
    int pins = 0;
    std::array<int, most_pins + 1> place{};  // by pin from 1
    std::array<int, all_places> told{};      // by place: the pin that a test names there; 0 where none is
    places wired = 0;
};

struct tested_model {
    const socket_of_pins& socket;
    std::span<const int> vpp{}, vcc{};                   // the pins whose drivers are switched
    int last_board_usb = -1, last_board_registers = -1;  // -1: no register test
    bool boards_3_and_4 = true;
    int banks = 4;
    bool memory_alone = false;    // tests nothing else, and by USB only
    bool ports_only_low = false;  // they drive no pin high
    int modules = 0;
};

tested_model tested_model_of(int model);

}  // namespace tamrix::tests
