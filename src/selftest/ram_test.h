// The programmer's RAM: random bytes are written, read back and compared.
#pragma once

#include "channel/frames.h"
#include "selftest/selftest_frame.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tamrix {

inline constexpr std::int32_t ram_block_bytes = 32768;

/// As many random bytes, the next ones of this run.
std::vector<std::uint8_t> random_bytes(selftest_frame& form, std::size_t count);

/// Whether `ibuf2` begins with these bytes. The first difference goes into the report as a fault of that block.
bool block_is_good(selftest_frame& form, int block, std::span<const std::uint8_t> expected, int slot = 0);

/// How many blocks of 32768 bytes, the last one perhaps shorter, read as they were written. They are read one by one; a
/// read that fails ends it.
int count_good_blocks(selftest_frame& form, std::span<const std::uint8_t> written, hw::frame_length frame);

/// Good blocks of four.
int test_small_ram(selftest_frame& form);
/// Good blocks of sixteen; of one on programmers that say that they have the smaller RAM.
int test_large_ram(selftest_frame& form);

/// Keeps the count for the instruments: the RAM's length is that of the good blocks.
void keep_ram_level(const selftest_frame& form, int good_blocks, std::int32_t block_bytes);

}  // namespace tamrix
