// Finds what is different, from the coarse to the fine: runs, blocks, pieces of blocks, bytes.
#include "editing/kept_bytes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace tamrix::editing {

namespace {

/// A gap of fewer equal bytes costs less than one more run.
constexpr std::size_t chunk_bytes = 32;

/// A part of a block, from its first byte that differs to its last one.
struct part {
    std::size_t first, end;
};

/// The bytes of a block that is one of these.
struct block_pair {
    std::span<const std::uint8_t> former, now;

    bool differ_in(std::size_t first, std::size_t end) const
    {
        return std::memcmp(former.data() + first, now.data() + first, end - first) != 0;
    }
    part trimmed(part wide) const
    {
        while (former[wide.first] == now[wide.first]) ++wide.first;
        while (former[wide.end - 1] == now[wide.end - 1]) --wide.end;
        return wide;
    }
};

/// Chunks side by side that differ are one part.
template <class F>
void visit_parts(const block_pair& pair, F&& visit)
{
    const std::size_t length = pair.former.size();
    for (std::size_t first = 0; first < length;) {
        std::size_t end = first;
        while (end < length && pair.differ_in(end, std::min(end + chunk_bytes, length)))
            end = std::min(end + chunk_bytes, length);
        if (end > first) visit(pair.trimmed({first, end}));
        first = end + chunk_bytes;
    }
}

std::size_t bytes_in_parts(const block_pair& pair)
{
    std::size_t sum = 0;
    visit_parts(pair, [&](part one) { sum += one.end - one.first; });
    return sum;
}

}  // namespace

kept_bytes differences(kept_bytes&& former, std::span<const std::uint8_t> now)
{
    kept_bytes found;
    std::array<std::uint8_t, kept_bytes::block_bytes> room{};
    const auto look_at = [&](kept_bytes::run& one, std::size_t first, std::size_t length) {
        const std::span shown = now.subspan(first, length);
        const std::span known = std::span{room}.first(length);
        one.piece.copy_to(known, first - one.address);
        const block_pair pair{known, shown};
        if (!pair.differ_in(0, length)) return;
        if (!one.piece.is_one_value() && bytes_in_parts(pair) * 2 > length) {
            found.add(std::move(one));
            return;
        }
        visit_parts(
            pair, [&](part wide) { found.add(first + wide.first, known.subspan(wide.first, wide.end - wide.first)); });
    };
    for (kept_bytes::run& one : former.runs_) {
        const std::size_t end = one.end();
        for (std::size_t at = one.address; at < end;) {
            const std::size_t length = std::min(end - at, kept_bytes::block_bytes - at % kept_bytes::block_bytes);
            look_at(one, at, length);
            at += length;
        }
    }
    former = {};
    return found;
}

}  // namespace tamrix::editing
