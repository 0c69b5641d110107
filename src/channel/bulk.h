// Whole blocks of data from and to the programmer's memory.
#pragma once

#include "channel/watchdog.h"

#include <cstdint>
#include <span>

namespace tamrix {
class session;
}

namespace tamrix::hw {

inline constexpr double bulk_read_limit_ms = 8000;
/// What the transport writes behind the last byte of a block.
inline constexpr std::uint8_t end_marker = 170;
inline constexpr std::uint8_t bulk_to_ram = 128, bulk_from_ram = 64, bulk_end = 0;

/// Length of the frames around a transfer: 16 where the programmer has the larger memory.
enum class bulk_frame : std::int32_t { small = 8, large = 16, write_start_of_small_ram = 4 };

/// Reads a block of memory into `ibuf2(0)` to `ibuf2(block_bytes - 1)`, 8000 ms at most while the message loop runs.
/// False on failure; `prgresult(0)` is 3 after a time-out. Throws subscript_error where `ibuf2` has no room for the
/// block and its end marker.
bool read_block(session& plug_in, std::uint8_t block, std::int32_t block_bytes, bulk_frame frame);

/// Writes `data` in blocks of `block_bytes`, the last one perhaps shorter, from memory's first block on: one start
/// frame, a wait, then block after block. False where a write failed; `prgresult(0)` is 1 then and no further block
/// goes out. The start frame's byte 3 is left as `ubuf1` has it.
bool write_blocks(session& plug_in, std::span<const std::uint8_t> data, std::int32_t block_bytes, bulk_frame frame,
                  std::int32_t wait_ms);

/// Ends the transfers, whether they passed or failed.
bool end_bulk(session& plug_in, bulk_frame frame);

/// The wait for a started read: false where it failed or `limit` ran out, true when the data have arrived. The end
/// marker may follow later.
bool wait_for_data(session& plug_in, watchdog& limit);

}  // namespace tamrix::hw
