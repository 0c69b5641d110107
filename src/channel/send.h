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

/// Sends the first bytes of `ubuf1`, bytes that this frame did not set included, and leaves the transport's
/// result in `prgresult(0)`. False where that is 1: the sequence ends then, there are no retries. Throws
/// subscript_error where `ubuf1` is shorter, programmer_error where there is no programmer.
bool send(session& plug_in, frame_length length);

}  // namespace tamrix::hw
