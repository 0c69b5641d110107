// Blocks of data to the programmer's memory.
#pragma once

#include "channel/frames.h"

#include <cstdint>
#include <span>

namespace tamrix::hw {

/// Announces a write from block `first` on and waits. Byte 3 of the frame is left as `ubuf1` has it.
bool begin_bulk_write(session& plug_in, std::uint8_t first, frame_length frame, std::int32_t wait_ms);

/// Writes `data` in blocks of `block_bytes`, the last one perhaps shorter, with a wait after each. False where a write
/// failed; `prgresult(0)` is 1 then and no further block goes out.
bool write_blocks(session& plug_in, std::span<const std::uint8_t> data, std::int32_t block_bytes,
                  std::int32_t wait_ms = 0);

}  // namespace tamrix::hw
