// The seven byte selections of the load dialog's two mode lists.
#pragma once

#include <array>
#include <cstdint>

namespace tamrix {

struct byte_selection {
    int message;  // catalogue number of the caption
    std::int16_t step;
    std::int16_t phase;
};

inline constexpr std::array<byte_selection, 7> byte_selections{{
    {1127, 1, 0},  // "Normal"
    {1128, 2, 0},
    {1129, 2, 1},
    {1130, 4, 0},
    {1131, 4, 1},
    {1132, 4, 2},
    {1133, 4, 3},
}};

}  // namespace tamrix
