// The RAM tests of the programmers with a 40-pin socket.
#pragma once

#include "selftest/selftest_frame.h"

namespace tamrix {

inline constexpr std::int32_t little_ram_bytes = 4096;

/// 1 where the RAM of 4096 bytes is good, else 0.
int test_little_ram(selftest_frame& form);
/// 1 where both blocks, of 32768 and of 24576 bytes, are good, else 0.
int test_ram_of_two_blocks(selftest_frame& form);

}  // namespace tamrix
