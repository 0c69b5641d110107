// The bytes of the buffer that a writer takes, record by record.
#pragma once

#include "session/session.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace tamrix {

/// `count` bytes of the buffer from `address` on; throws subscript_error if one of them is outside.
inline std::span<const std::uint8_t> buffer_bytes(session& plug_in, std::int64_t address, std::int64_t count)
{
    auto& ibuffer = plug_in.blocks.ibuffer;
    if (count == 0) return {};
    const std::uint8_t* first = &ibuffer(address);
    static_cast<void>(ibuffer(address + count - 1));
    return {first, static_cast<std::size_t>(count)};
}

}  // namespace tamrix
