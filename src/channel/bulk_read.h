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
    double limit_ms;                 // of the whole wait
    block_end end;
};

/// Starts the read of a block that a frame has announced, and waits while the message loop runs. Returns false if the
/// transport reports a failure, and after the limit, when `prgresult(0)` is 3.
bool await_block(session& plug_in, const awaited_block& awaited);

/// The first `bytes` bytes of `ibuf2`, as a target. Throws subscript_error if it is shorter, and for 0 or less.
std::span<std::uint8_t> in_ibuf2(session& plug_in, std::int32_t bytes);

/// Reads a block of memory into `ibuf2(0)` to `ibuf2(block_bytes - 1)` within 8000 ms. Returns false on failure;
/// `prgresult(0)` is 3 after a time-out. Throws subscript_error if `ibuf2` has no room for the block and its end
/// marker.
bool read_block(session& plug_in, std::uint8_t block, std::int32_t block_bytes, frame_length frame);

}  // namespace tamrix::hw
