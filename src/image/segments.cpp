#include "image/segments.h"

#include <algorithm>
#include <numeric>

namespace tamrix {

std::uint64_t segment_list::bytes() const
{
    return std::accumulate(held_.begin(), held_.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const memory_segment& one) { return sum + one.length; });
}

std::optional<memory_segment> segment_list::insert(memory_segment added)
{
    const auto first = std::ranges::lower_bound(held_, added.first, {}, &memory_segment::end);
    auto last = first;
    std::optional<memory_segment> before;
    std::uint64_t begin = added.first, end = added.end();
    for (; last != held_.end() && last->first <= added.end(); ++last) {
        const std::uint64_t from = std::max(last->first, added.first), to = std::min(last->end(), added.end());
        if (!before && from < to) before = memory_segment{from, to - from};
        begin = std::min(begin, last->first);
        end = std::max(end, last->end());
    }
    const auto place = held_.erase(first, last);
    held_.insert(place, {begin, end - begin});
    return before;
}

}  // namespace tamrix
