// The Output Test of the 48-pin socket: which sweeps it makes, and how each begins.
#pragma once

#include "selftest/pin_access.h"

namespace tamrix {

/// Models below 40: the outermost pins are reached through another board, and swept apart.
stage_end test_outputs_in_two_parts(socket_frame& form, const pin_access& access);
/// In which order a side's two levels come; the lines that are not driven have them.
enum class output_pattern : std::uint8_t { high_first, low_first };
/// Models from 40 on: a whole side at once, fed by 5 V.
stage_end test_outputs_of_whole_sides(socket_frame& form, const pin_access& access,
                                      output_pattern pattern = output_pattern::high_first);

}  // namespace tamrix
