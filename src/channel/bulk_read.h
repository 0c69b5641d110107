// The one wait for a block of data from the programmer.
#pragma once

#include "channel/frames.h"

#include <cstdint>
#include <span>

namespace tamrix::hw {

inline constexpr double bulk_read_limit_ms = 8000;
/// What the transport writes after the last byte of a block.
inline constexpr std::uint8_t end_marker = 170;

enum class block_end : std::uint8_t {
    data,    // the data have arrived; the marker may follow later
    marker,  // the target's last byte, which is no data, holds the end marker
};

/// A block on its way.
struct awaited_block {
    std::span<std::uint8_t> target;  // not empty; in shared memory, to its last byte
    double limit_ms;
    block_end end;
};

/// Starts the read of a block that a frame has announced, and waits while the message loop runs. False where the
/// transport reports a failure, or after the limit; `prgresult(0)` is 3 then.
bool await_block(session& plug_in, const awaited_block& awaited);

/// The first bytes of `ibuf2`, as a target. Throws subscript_error where it has not as many, and for none.
std::span<std::uint8_t> in_ibuf2(session& plug_in, std::int32_t bytes);

/// Reads a block of memory into `ibuf2(0)` to `ibuf2(block_bytes - 1)`, 8000 ms at most. False on failure;
/// `prgresult(0)` is 3 after a time-out. Throws subscript_error where `ibuf2` has no room for the block and its end
/// marker.
bool read_block(session& plug_in, std::uint8_t block, std::int32_t block_bytes, frame_length frame);

}  // namespace tamrix::hw
