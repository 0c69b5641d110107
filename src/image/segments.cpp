#include "image/segments.h"

#include <algorithm>
#include <cstddef>
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

std::optional<memory_segment> first_common(const segment_list& one, const segment_list& other)
{
    const auto a = one.all(), b = other.all();
    for (std::size_t i = 0, k = 0; i < a.size() && k < b.size();) {
        const std::uint64_t from = std::max(a[i].first, b[k].first), to = std::min(a[i].end(), b[k].end());
        if (from < to) return memory_segment{from, to - from};
        a[i].end() < b[k].end() ? ++i : ++k;
    }
    return std::nullopt;
}

segment_list without(const segment_list& from, const segment_list& other)
{
    segment_list left;
    const auto taken = other.all();
    std::size_t k = 0;
    for (const memory_segment& one : from.all()) {
        std::uint64_t at = one.first;
        while (k < taken.size() && taken[k].end() <= at) ++k;
        for (std::size_t i = k; i < taken.size() && taken[i].first < one.end(); ++i) {
            if (taken[i].first > at) left.add({at, taken[i].first - at});
            at = taken[i].end();
        }
        if (at < one.end()) left.add({at, one.end() - at});
    }
    return left;
}

}  // namespace tamrix
