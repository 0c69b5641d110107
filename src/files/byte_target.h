// Takes bytes that come one after the other: into a file, a pipe or memory.
#pragma once

#include <cstdint>
#include <span>

namespace tamrix {

class byte_target {
public:
    virtual ~byte_target() = default;
    /// Throws file_error.
    virtual void write(std::span<const std::uint8_t> bytes) = 0;
};

}  // namespace tamrix
