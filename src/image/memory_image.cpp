#include "image/memory_image.h"

#include "image/crc32.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <new>
#include <numeric>
#include <stdexcept>

namespace tamrix {

namespace {

constexpr std::uint64_t all_filled = ~std::uint64_t{0};  // the bits of 64 bytes

}  // namespace

void memory_image::page::fill(std::uint64_t first, std::uint64_t count)
{
    const std::uint64_t last = first + count - 1;
    const std::uint64_t from = all_filled << first % 64, to = all_filled >> (63 - last % 64);
    if (first / 64 == last / 64) {
        filled[first / 64] |= from & to;
        return;
    }
    filled[first / 64] |= from;
    for (std::uint64_t word = first / 64 + 1; word < last / 64; ++word) filled[word] = all_filled;
    filled[last / 64] |= to;
}

/// Stores grow with the image, so that a large one is in few of them and a small one is small.
memory_image::page* memory_image::fresh_page()
{
    constexpr std::size_t most = 256;
    if (stores_.empty() || stores_.back().used == stores_.back().room) {
        const std::size_t room = stores_.empty() ? 1 : std::min(2 * stores_.back().room, most);
        stores_.push_back({memory_block{room * sizeof(page)}, room});
    }
    page_store& store = stores_.back();
    auto* const fresh = new (store.memory.data() + sizeof(page) * store.used++) page;
    fresh->filled.fill(0);
    return fresh;
}

memory_image::page& memory_image::page_of(std::uint64_t address)
{
    const std::uint64_t first = address / page_bytes * page_bytes;
    if (first != last_address_) {
        auto held = pages_.lower_bound(first);
        if (held == pages_.end() || held->first != first) held = pages_.emplace_hint(held, first, fresh_page());
        last_address_ = first;
        last_page_ = held->second;
    }
    return *last_page_;
}

void memory_image::take(std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    if (address >= image_address_limit || image_address_limit - address < bytes.size())
        throw std::out_of_range{"an address of more than 48 bits"};
    filled_.reset();
    while (!bytes.empty()) {
        const std::uint64_t inside = address % page_bytes;
        const std::size_t count = std::min<std::uint64_t>(page_bytes - inside, bytes.size());
        page& held = page_of(address);
        std::ranges::copy(bytes.first(count), held.bytes.begin() + static_cast<std::ptrdiff_t>(inside));
        held.fill(inside, count);
        bytes = bytes.subspan(count);
        address += count;
    }
}

const segment_list& memory_image::filled() const
{
    if (filled_) return *filled_;
    filled_.emplace();
    for (const auto& [first, held] : pages_) {
        for (std::uint64_t word = 0; word < held->filled.size(); ++word) {
            std::uint64_t bits = held->filled[word];
            if (bits == all_filled) {
                const std::uint64_t from = word;
                while (word + 1 < held->filled.size() && held->filled[word + 1] == all_filled) ++word;
                filled_->add({first + 64 * from, 64 * (word + 1 - from)});
                continue;
            }
            for (std::uint64_t at = 0; bits != 0;) {
                const auto gap = static_cast<std::uint64_t>(std::countr_zero(bits));
                const auto run = static_cast<std::uint64_t>(std::countr_one(bits >> gap));
                filled_->add({first + 64 * word + at + gap, run});
                at += gap + run;
                bits = at < 64 ? held->filled[word] >> at : 0;
            }
        }
    }
    return *filled_;
}

memory_segment memory_image::extent() const
{
    const auto all = filled().all();
    return all.empty() ? memory_segment{0, 0} : memory_segment{all.front().first, all.back().end() - all.front().first};
}

void memory_image::visit(memory_segment range, const visitor& see) const
{
    const auto all = filled().all();
    auto segment = std::ranges::upper_bound(all, range.first, {}, &memory_segment::end);
    for (; segment != all.end() && segment->first < range.end(); ++segment) {
        std::uint64_t from = std::max(segment->first, range.first);
        const std::uint64_t to = std::min(segment->end(), range.end());
        for (auto held = pages_.find(from / page_bytes * page_bytes); from < to; ++held) {
            const std::uint64_t end = std::min(to, held->first + page_bytes);
            see(from, std::span{held->second->bytes}.subspan(from - held->first, end - from));
            from = end;
        }
    }
}

std::optional<std::uint8_t> memory_image::at(std::uint64_t address) const
{
    std::optional<std::uint8_t> found;
    visit({address, 1}, [&](std::uint64_t, std::span<const std::uint8_t> bytes) { found = bytes[0]; });
    return found;
}

image_sums sums_of(const memory_image& image)
{
    image_sums sums;
    crc32 check;
    image.visit([&](std::uint64_t, std::span<const std::uint8_t> bytes) {
        sums.sum = std::accumulate(bytes.begin(), bytes.end(), sums.sum);
        check.add(bytes);
    });
    sums.crc32 = check.value();
    return sums;
}

memory_image cropped(const memory_image& image, memory_segment range)
{
    memory_image made;
    image.visit(range, [&](std::uint64_t address, std::span<const std::uint8_t> bytes) { made.take(address, bytes); });
    return made;
}

memory_image moved(const memory_image& image, std::int64_t offset)
{
    const auto shift = static_cast<std::uint64_t>(offset);  // modulo 2^64, so that what is below 0 is above the limit
    memory_image made;
    image.visit([&](std::uint64_t address, std::span<const std::uint8_t> bytes) { made.take(address + shift, bytes); });
    return made;
}

memory_image swapped(const memory_image& image, int group)
{
    const auto mask = static_cast<std::uint64_t>(group - 1);
    memory_image made;
    image.visit([&](std::uint64_t address, std::span<const std::uint8_t> bytes) {
        const std::size_t odd = std::min<std::size_t>((mask + 1 - (address & mask)) & mask, bytes.size());
        const std::size_t whole = (bytes.size() - odd) / (mask + 1) * (mask + 1);
        const auto one_by_one = [&](std::size_t from, std::size_t to) {
            for (std::size_t i = from; i < to; ++i) made.take((address + i) ^ mask, bytes.subspan(i, 1));
        };
        one_by_one(0, odd);
        std::vector<std::uint8_t> turned(whole);
        for (std::size_t i = 0; i < whole; ++i) turned[i ^ mask] = bytes[odd + i];
        made.take(address + odd, turned);
        one_by_one(odd + whole, bytes.size());
    });
    return made;
}

std::vector<memory_segment> gaps_in(const memory_image& image, memory_segment range, std::uint64_t least)
{
    segment_list wanted;
    wanted.add(range);
    const segment_list missing = without(wanted, image.filled());
    std::vector<memory_segment> gaps;
    std::ranges::copy_if(missing.all(), std::back_inserter(gaps),
                         [least](const memory_segment& gap) { return gap.length >= least; });
    return gaps;
}

void fill_gaps(memory_image& image, memory_segment range, std::uint8_t value)
{
    constexpr std::uint64_t piece = 0x10000;
    const std::vector<std::uint8_t> filling(piece, value);
    for (const memory_segment& gap : gaps_in(image, range)) {
        for (std::uint64_t at = gap.first; at < gap.end(); at += piece)
            image.take(at, std::span{filling}.first(std::min(piece, gap.end() - at)));
    }
}

}  // namespace tamrix
