// Loads the FPGA of a module.
#pragma once

#include "selftest/selftest_frame.h"

#include <cstdint>

namespace tamrix {

/// What `prgresult(0)` is after a load that failed.
inline constexpr std::uint8_t module_not_loaded = 4;

/// Sends the image with this index (see selftest/module_image.h) to module 1 to 4, again while its FPGA does not start,
/// four times at most. A `mode` of 3 becomes 0. Failure shows in a box and in `prgresult(0)` alone.
void xcinit_LM(selftest_frame& form, std::uint8_t fileindex, std::uint8_t& mode, std::int16_t slot);

}  // namespace tamrix
