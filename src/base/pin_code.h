// The number by which a programmer knows a contact of its socket.
#pragma once

#include <cstdint>

namespace tamrix {

/// The pin code of position `i` of a package or a row, from 0, with `half` positions a column: from 1 up the left
/// column, from 101 up the right one.
constexpr std::uint8_t pin_code_of_position(int i, int half)
{
    return static_cast<std::uint8_t>(i < half ? half - i : i - half + 101);
}

}  // namespace tamrix
