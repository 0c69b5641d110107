// A command frame on its way to the programmer.
#pragma once

#include "channel/frames.h"

#include <cstdint>

namespace tamrix {
class session;
}

namespace tamrix::hw {

/// The values of `prgresult(0)` that the channel itself sets or asks for.
inline constexpr std::uint8_t prgresult_write_failed = 1, prgresult_timed_out = 3;

/// Sends the first `length` bytes of `ubuf1`, including those that this frame did not set, and leaves the transport's
/// result in `prgresult(0)`. Returns false if that is 1: the sequence then ends, without retries. Throws
/// subscript_error if `ubuf1` is shorter, programmer_error if there is no programmer.
bool send(session& plug_in, frame_length length);

}  // namespace tamrix::hw
