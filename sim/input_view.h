// How port 0 of a programmer reads signals at its pins while all else there stays as it is.
#pragma once

#include "sim/signals/signal.h"

#include <array>

namespace tamrix::sim {

struct input_view {
    std::uint8_t open = 255, low = 0, high = 255;  // the port where nothing, a low or a high comes to all pins
    bool any_joined = false;
    std::array<std::uint8_t, 8> joined{};  // then, by bit: those at one node with it

    std::uint8_t read(pin_levels levels) const
    {
        const unsigned lows = spread(levels.driven & ~static_cast<unsigned>(levels.high));
        const unsigned highs = spread(levels.high) & ~lows;
        return static_cast<std::uint8_t>((low & lows) | (high & highs) | (open & ~(lows | highs)));
    }

private:
    unsigned spread(unsigned bits) const
    {
        if (!any_joined) return bits;
        unsigned all = 0;
        for (std::size_t bit = 0; bit < joined.size(); ++bit) {
            if ((bits & joined[bit]) != 0) all |= 1u << bit;
        }
        return all;
    }
};

}  // namespace tamrix::sim
