// Goes through the samples of a source from change to change. Used by this folder only.
#pragma once

#include "capture/formats.h"

#include <cstring>
#include <vector>

namespace tamrix::capture {

/// Calls `on_change(sample, level, before)` for the first sample, whose `before` is its complement, and for each that
/// differs from the one before. Returns the number of samples.
template <typename change>
std::uint64_t walk_changes(sample_source& from, change on_change)
{
    std::vector<std::uint8_t> piece(piece_samples);
    std::uint64_t begin = 0;
    std::uint8_t level = 0;
    while (const std::size_t count = from.read(piece)) {
        if (begin == 0) level = static_cast<std::uint8_t>(~piece[0]);
        for (std::size_t i = 0; i < count; ++i) {
            std::uint64_t next = 0;
            while (i + sizeof next <= count) {
                std::memcpy(&next, piece.data() + i, sizeof next);
                if (next != level * 0x0101010101010101u) break;
                i += sizeof next;
            }
            if (i == count || piece[i] == level) continue;
            on_change(begin + i, piece[i], level);
            level = piece[i];
        }
        begin += count;
    }
    return begin;
}

}  // namespace tamrix::capture
