// Which addresses the records of a file have filled so far, in any order of them.
#pragma once

#include "image/segments.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <optional>

namespace tamrix {

/// Unlike a segment_list, adding is fast also where a file goes down through its addresses with gaps.
class occupancy {
public:
    /// The lowest stretch of `asked` that is filled.
    std::optional<memory_segment> filled_in(memory_segment asked) const
    {
        auto after = ends_.upper_bound(asked.first);
        if (after != ends_.begin() && std::prev(after)->second > asked.first) --after;
        if (after == ends_.end() || after->first >= asked.end()) return std::nullopt;
        const std::uint64_t from = std::max(after->first, asked.first);
        return memory_segment{from, std::min(after->second, asked.end()) - from};
    }

    /// The first filled address from `address` on; the highest number if all are free.
    std::uint64_t free_until(std::uint64_t address) const
    {
        constexpr std::uint64_t highest = std::numeric_limits<std::uint64_t>::max();
        const auto filled = filled_in({address, highest - address});
        return filled ? filled->first : highest;
    }

    void add(memory_segment added)
    {
        if (added.length == 0) return;
        std::uint64_t first = added.first, end = added.end();
        auto next = ends_.upper_bound(first);
        if (next != ends_.begin() && std::prev(next)->second >= first) --next;
        while (next != ends_.end() && next->first <= end) {
            first = std::min(first, next->first);
            end = std::max(end, next->second);
            next = ends_.erase(next);
        }
        ends_.emplace_hint(next, first, end);
    }

    segment_list list() const
    {
        segment_list all;
        for (const auto& [first, end] : ends_) all.add({first, end - first});
        return all;
    }

private:
    std::map<std::uint64_t, std::uint64_t> ends_;  // of the segments, by their first addresses
};

}  // namespace tamrix
