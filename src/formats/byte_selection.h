// The seven byte selections of the load dialog's two mode lists.
#pragma once

#include "messages/message_numbers.h"

#include <array>
#include <cstdint>

namespace tamrix {

struct byte_selection {
    int message;  // catalogue number of the caption
    std::int16_t step;
    std::int16_t phase;
};

inline constexpr std::array<byte_selection, 7> byte_selections{{
    {message::normal, 1, 0},
    {message::even_1st_of_2, 2, 0},
    {message::odd_2nd_of_2, 2, 1},
    {message::byte_1_of_4, 4, 0},
    {message::byte_2_of_4, 4, 1},
    {message::byte_3_of_4, 4, 2},
    {message::byte_4_of_4, 4, 3},
}};

}  // namespace tamrix
