// Filling a range of the buffer.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tamrix {

/// Sets buffer(`first`) to buffer(`last`), both included. A range stops at the end of the view: a mapping may be
/// smaller than the buffer length that the host gives.
inline void fill(std::span<std::uint8_t> buffer, std::int64_t first, std::int64_t last, std::uint8_t value)
{
    const std::int64_t end = std::min(last + 1, static_cast<std::int64_t>(buffer.size()));
    if (first < 0 || first >= end) return;
    std::ranges::fill(buffer.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)), value);
}

}  // namespace tamrix
