// A stretch of the buffer.
#pragma once

#include <algorithm>
#include <cstddef>

namespace tamrix::editing {

struct byte_range {
    std::size_t first = 0, length = 0;

    bool empty() const { return length == 0; }
    std::size_t end() const { return first + length; }
    bool contains(std::size_t address) const { return address >= first && address - first < length; }
    bool operator==(const byte_range&) const = default;
};

/// Shown as a character, and not as a point.
constexpr bool is_printable(unsigned char byte) { return byte >= 0x20 && byte < 0x7F; }

/// The part of `range` that lies in a buffer of `bytes` bytes.
inline byte_range within(byte_range range, std::size_t bytes)
{
    const std::size_t first = std::min(range.first, bytes);
    return {first, std::min(range.length, bytes - first)};
}

}  // namespace tamrix::editing
