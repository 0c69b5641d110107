// How the lines of the pin ports reach the lamps on programmers whose 40-pin socket is wired in an order of its own.
#pragma once

#include "selftest/lamps.h"

#include <array>
#include <cstdint>

namespace tamrix::lamps {

/// The lamps of the lines 4 to 43, in the order of the lines. The lines 0 to 3 and 44 to 47 reach no pin.
inline constexpr std::array<std::uint8_t, 40> of_small_socket_line = {
    4,  5,  6,  7,  9,  37, 8,  38, 34, 33, 30, 32, 19, 18, 17, 16, 20, 21, 22, 24,
    25, 26, 27, 28, 15, 14, 13, 12, 11, 35, 36, 10, 29, 31, 39, 23, 43, 42, 41, 40,
};

}  // namespace tamrix::lamps
