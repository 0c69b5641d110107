// The RAM of a module, written and read through that of the unit.
#pragma once

#include "selftest/selftest_frame.h"

#include <cstdint>

namespace tamrix {

inline constexpr int blocks_of_module_ram = 16;

/// The good blocks of module 1 to 4, of sixteen with 32768 bytes each. Where a frame or a block of data is refused or
/// does not come, the test ends with those that it has counted.
int ramcheck_lm4(selftest_frame& form, std::int16_t slot);

}  // namespace tamrix
