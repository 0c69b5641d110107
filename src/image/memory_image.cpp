#include "image/memory_image.h"

#include "image/crc32.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace tamrix {

std::uint8_t* memory_image::page_of(std::uint64_t address)
{
    const std::uint64_t first = address / page_bytes * page_bytes;
    if (first != last_address_) {
        page& wanted = pages_[first];
        if (wanted == nullptr) wanted = std::make_unique_for_overwrite<std::uint8_t[]>(page_bytes);
        last_address_ = first;
        last_page_ = wanted.get();
    }
    return last_page_ + (address - first);
}

void memory_image::take(std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    if (address >= image_address_limit || image_address_limit - address < bytes.size())
        throw std::out_of_range{"an address of more than 48 bits"};
    filled_.add({address, bytes.size()});
    while (!bytes.empty()) {
        const std::uint64_t room = page_bytes - address % page_bytes;
        const std::size_t count = std::min<std::uint64_t>(room, bytes.size());
        std::ranges::copy(bytes.first(count), page_of(address));
        bytes = bytes.subspan(count);
        address += count;
    }
}

memory_segment memory_image::extent() const
{
    const auto all = filled_.all();
    return all.empty() ? memory_segment{0, 0} : memory_segment{all.front().first, all.back().end() - all.front().first};
}

void memory_image::visit(memory_segment range, const visitor& see) const
{
    const auto all = filled_.all();
    auto segment = std::ranges::upper_bound(all, range.first, {}, &memory_segment::end);
    for (; segment != all.end() && segment->first < range.end(); ++segment) {
        std::uint64_t from = std::max(segment->first, range.first);
        const std::uint64_t to = std::min(segment->end(), range.end());
        for (auto held = pages_.find(from / page_bytes * page_bytes); from < to; ++held) {
            const std::uint64_t end = std::min(to, held->first + page_bytes);
            see(from, {held->second.get() + (from - held->first), static_cast<std::size_t>(end - from)});
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

std::vector<memory_segment> gaps_of(const memory_image& image, std::uint64_t least)
{
    std::vector<memory_segment> gaps;
    const auto all = image.filled().all();
    for (std::size_t i = 1; i < all.size(); ++i) {
        const memory_segment gap{all[i - 1].end(), all[i].first - all[i - 1].end()};
        if (gap.length >= least) gaps.push_back(gap);
    }
    return gaps;
}

void fill_gaps(memory_image& image, std::uint8_t value)
{
    constexpr std::uint64_t piece = 0x10000;
    const std::vector<std::uint8_t> filling(piece, value);
    for (const memory_segment& gap : gaps_of(image)) {
        for (std::uint64_t at = gap.first; at < gap.end(); at += piece)
            image.take(at, std::span{filling}.first(std::min(piece, gap.end() - at)));
    }
}

}  // namespace tamrix
