#include "editing/kept_bytes.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tamrix::editing {

bool is_one_value(std::span<const std::uint8_t> bytes)
{
    return bytes.size() < 2 || std::memcmp(bytes.data(), bytes.data() + 1, bytes.size() - 1) == 0;
}

kept_piece::kept_piece(std::span<const std::uint8_t> bytes) : length_{bytes.size()}
{
    if (editing::is_one_value(bytes)) {
        if (!bytes.empty()) value_ = bytes.front();
        return;
    }
    bytes_ = std::make_unique_for_overwrite<std::uint8_t[]>(length_);
    std::ranges::copy(bytes, bytes_.get());
}

bool kept_piece::equals(std::span<const std::uint8_t> others) const
{
    if (others.size() != length_) return false;
    if (!is_one_value()) return std::memcmp(bytes_.get(), others.data(), length_) == 0;
    return others.empty() || (others.front() == value_ && editing::is_one_value(others));
}

void kept_piece::copy_to(std::span<std::uint8_t> target, std::size_t first) const
{
    if (is_one_value()) {
        std::ranges::fill(target, value_);
    } else {
        std::copy_n(bytes_.get() + first, target.size(), target.begin());
    }
}

void kept_piece::swap_with(std::span<std::uint8_t> target)
{
    std::ranges::swap_ranges(std::span{bytes_.get(), length_}, target);
    if (!editing::is_one_value({bytes_.get(), length_})) return;
    value_ = bytes_[0];
    bytes_.reset();
}

void kept_bytes::add(run added)
{
    if (added.piece.length() == 0) return;
    if (!runs_.empty() && runs_.back().end() == added.address && added.piece.is_one_value() &&
        runs_.back().piece.is_one_value() && runs_.back().piece.value() == added.piece.value()) {
        runs_.back().piece.grow(added.piece.length());
        return;
    }
    pieces_memory_ += added.piece.memory();
    runs_.push_back(std::move(added));
}

void kept_bytes::add(std::size_t address, std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.size(), block_bytes - address % block_bytes);
        add(run{address, kept_piece{bytes.first(length)}});
        address += length;
        bytes = bytes.subspan(length);
    }
}

void kept_bytes::add(kept_bytes&& others)
{
    for (run& one : others.runs_) add(std::move(one));
    others = {};
}

void kept_bytes::exchange(std::span<std::uint8_t> buffer)
{
    kept_bytes others;
    others.runs_.reserve(runs_.size());
    for (run& one : runs_) {
        const std::span target = buffer.subspan(one.address, one.piece.length());
        if (one.piece.is_one_value()) {
            others.add(one.address, target);
            std::ranges::fill(target, one.piece.value());
        } else {
            one.piece.swap_with(target);
            others.add(std::move(one));
        }
    }
    *this = std::move(others);
}

void kept_bytes::copy_to(std::span<std::uint8_t> buffer) const
{
    for (const run& one : runs_) {
        if (one.address >= buffer.size()) return;
        one.piece.copy_to(buffer.subspan(one.address, std::min(one.piece.length(), buffer.size() - one.address)));
    }
}

void kept_bytes::read(std::size_t address, std::span<std::uint8_t> target) const
{
    const auto ends_before = [](const run& one, std::size_t place) { return one.end() <= place; };
    for (auto one = std::lower_bound(runs_.begin(), runs_.end(), address, ends_before); one != runs_.end(); ++one) {
        const std::size_t first = std::max(address, one->address), end = std::min(address + target.size(), one->end());
        if (first >= end) return;
        one->piece.copy_to(target.subspan(first - address, end - first), first - one->address);
    }
}

kept_bytes kept_bytes::take_from(std::size_t address)
{
    kept_bytes taken, left;
    for (run& one : runs_) {
        if (one.end() <= address) {
            left.add(std::move(one));
        } else if (one.address >= address) {
            taken.add(std::move(one));
        } else if (const std::size_t before = address - one.address; one.piece.is_one_value()) {
            left.add(run{one.address, kept_piece{one.piece.value(), before}});
            taken.add(run{address, kept_piece{one.piece.value(), one.piece.length() - before}});
        } else {
            std::vector<std::uint8_t> bytes(one.piece.length());
            one.piece.copy_to(bytes);
            left.add(one.address, std::span{bytes}.first(before));
            taken.add(address, std::span{bytes}.subspan(before));
        }
    }
    *this = std::move(left);
    return taken;
}

}  // namespace tamrix::editing
