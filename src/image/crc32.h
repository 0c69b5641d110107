// The CRC-32 of Ethernet and zip files.
#pragma once

#include <cstdint>
#include <span>

namespace tamrix {

class crc32 {
public:
    void add(std::span<const std::uint8_t> bytes);
    /// Of all bytes that were added.
    std::uint32_t value() const { return ~state_; }

private:
    std::uint32_t state_ = 0xFFFFFFFF;
};

}  // namespace tamrix
