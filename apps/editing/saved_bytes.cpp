#include "editing/saved_bytes.h"

#include <algorithm>
#include <array>

namespace tamrix::editing {

namespace {

/// A block with its node in the map.
std::size_t memory_of(const kept_piece& block)
{
    constexpr std::size_t links_of_node = 40;
    return sizeof(block) + links_of_node + kept_piece::allocation_bytes + block.memory();
}

}  // namespace

void all_bytes::read(std::size_t address, std::span<std::uint8_t> target) const
{
    if (address < shown.size()) {
        const std::span part = shown.subspan(address, std::min(target.size(), shown.size() - address));
        std::ranges::copy(part, target.begin());
        target = target.subspan(part.size());
        address += part.size();
    }
    if (!target.empty()) hidden->read(address, target);
}

/// The block that a merge is in.
struct saved_bytes::open_block {
    bool used = false;
    std::size_t number = 0, known = 0;  // how many of its bytes were kept before the merge
    std::array<std::uint8_t, block_bytes> saved_room{}, now_room{};
    std::span<std::uint8_t> saved{};
    std::span<const std::uint8_t> now{};
};

void saved_bytes::clear()
{
    blocks_.clear();
    memory_ = 0;
}

void saved_bytes::remove(block_map::iterator one)
{
    memory_ -= memory_of(one->second);
    blocks_.erase(one);
}

void saved_bytes::open(open_block& block, std::size_t number, const all_bytes& now) const
{
    const std::size_t first = number * block_bytes, length = std::min(block_bytes, now.length() - first);
    block.used = true;
    block.number = number;
    block.known = 0;
    if (first + length <= now.shown.size()) {
        block.now = now.shown.subspan(first, length);
    } else {
        const std::span room = std::span{block.now_room}.first(length);
        now.read(first, room);
        block.now = room;
    }
    block.saved = std::span{block.saved_room}.first(length);
    if (const auto kept = blocks_.find(number); kept != blocks_.end()) {
        block.known = kept->second.length();
        kept->second.copy_to(block.saved.first(block.known));
    }
    std::ranges::copy(block.now.subspan(block.known), block.saved.begin() + static_cast<std::ptrdiff_t>(block.known));
}

void saved_bytes::store(std::size_t number, std::span<const std::uint8_t> saved, std::span<const std::uint8_t> now)
{
    const auto place = blocks_.lower_bound(number);
    const bool is_kept = place != blocks_.end() && place->first == number;
    if (std::ranges::equal(saved, now)) {
        if (is_kept) remove(place);
        return;
    }
    if (is_kept && place->second.equals(saved)) return;
    const auto after = is_kept ? std::next(place) : place;
    if (is_kept) remove(place);
    memory_ += memory_of(blocks_.emplace_hint(after, number, kept_piece{saved})->second);
}

void saved_bytes::close(const open_block& block)
{
    if (block.used) store(block.number, block.saved, block.now);
}

void saved_bytes::merge(const kept_bytes& bytes, const all_bytes& now, takes which)
{
    open_block block;
    for (const kept_bytes::run& one : bytes.runs()) {
        for (std::size_t at = one.address; at < one.end();) {
            if (!block.used || block.number != at / block_bytes) {
                close(block);
                open(block, at / block_bytes, now);
            }
            const std::size_t first = block.number * block_bytes, end = std::min(one.end(), first + block_bytes);
            const std::size_t unknown = which == takes::all_bytes ? at : std::max(at, first + block.known);
            if (unknown < end)
                one.piece.copy_to(block.saved.subspan(unknown - first, end - unknown), unknown - one.address);
            at = end;
        }
    }
    close(block);
}

void saved_bytes::follow(const kept_bytes& former, const all_bytes& now) { merge(former, now, takes::unknown_bytes); }

void saved_bytes::put_back(const kept_bytes& saved, const all_bytes& now) { merge(saved, now, takes::all_bytes); }

kept_bytes saved_bytes::take_from(std::size_t end, const all_bytes& now)
{
    kept_bytes taken;
    std::array<std::uint8_t, block_bytes> saved{}, present{};
    for (auto one = blocks_.lower_bound(end / block_bytes); one != blocks_.end();) {
        const std::size_t number = one->first, first = number * block_bytes, length = one->second.length();
        const std::size_t left = std::min(length, end > first ? end - first : 0);
        one->second.copy_to(std::span{saved}.first(length));
        taken.add(first + left, std::span{saved}.subspan(left, length - left));
        ++one;  // before what it is at goes
        now.read(first, std::span{present}.first(left));
        store(number, std::span{saved}.first(left), std::span{present}.first(left));
    }
    return taken;
}

std::vector<bool> saved_bytes::differences(std::size_t address, std::span<const std::uint8_t> shown) const
{
    std::vector<bool> differ(shown.size());
    std::array<std::uint8_t, block_bytes> saved{};
    const std::size_t end = address + shown.size();
    for (auto one = blocks_.lower_bound(address / block_bytes); one != blocks_.end(); ++one) {
        const std::size_t first = one->first * block_bytes;
        if (first >= end) break;
        one->second.copy_to(std::span{saved}.first(one->second.length()));
        const std::size_t last = std::min(end, first + one->second.length());
        for (std::size_t at = std::max(address, first); at < last; ++at)
            differ[at - address] = saved[at - first] != shown[at - address];
    }
    return differ;
}

}  // namespace tamrix::editing
