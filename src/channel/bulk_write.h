// Blocks of data to the programmer's memory.
#pragma once

#include "channel/frames.h"

#include <cstdint>
#include <span>

namespace tamrix::hw {

/// Announces a write that begins at block `first`, then waits `wait_ms` milliseconds. Leaves byte 3 of the frame as it
/// is in `ubuf1`. Returns false if the frame was not taken.
bool begin_bulk_write(session& plug_in, std::uint8_t first, frame_length frame, std::int32_t wait_ms);

/// Writes `data` in blocks of `block_bytes`; the last one may be shorter. Waits `wait_ms` milliseconds after each.
/// Returns false after the first failed write: `prgresult(0)` is then 1 and no further block goes out.
bool write_blocks(session& plug_in, std::span<const std::uint8_t> data, std::int32_t block_bytes,
                  std::int32_t wait_ms = 0);

}  // namespace tamrix::hw
