#include "editing/comparison.h"

#include <algorithm>
#include <cstring>

namespace tamrix::editing {

namespace {

constexpr std::size_t piece_bytes = std::size_t{1} << 20;
/// So many bytes are compared at once before they are compared one by one.
constexpr std::size_t stride = 256;

std::size_t piece_of(std::size_t address) { return address / piece_bytes; }

}  // namespace

comparison::comparison(std::span<const std::uint8_t> buffer, const memory_image& file)
    : buffer_{buffer},
      file_{file},
      length_{static_cast<std::size_t>(
          std::min(shown_addresses, std::max<std::uint64_t>(buffer.size(), file.extent().end())))}
{
    const std::uint64_t end = file.extent().end();
    if (end <= shown_addresses) return;
    file.visit({shown_addresses, end - shown_addresses},
               [this](std::uint64_t, std::span<const std::uint8_t> bytes) { counts_.above += bytes.size(); });
    counts_.only_in_file = counts_.above;
}

difference comparison::at(std::size_t address) const
{
    const auto in_file = file_.at(address);
    if (address >= buffer_.size()) return in_file ? difference::only_in_file : difference::none;
    if (!in_file) return difference::only_in_buffer;
    return *in_file == buffer_[address] ? difference::none : difference::bytes_differ;
}

/// Of bytes of the file: see(range, kind) for runs of one kind, of which neighbours may have the same.
template <typename Visitor>
void comparison::compare(std::size_t address, std::span<const std::uint8_t> file, Visitor see) const
{
    const std::size_t both = address < buffer_.size() ? std::min(file.size(), buffer_.size() - address) : 0;
    const std::uint8_t* const mine = buffer_.data() + (both > 0 ? address : 0);
    for (std::size_t i = 0; i < both;) {
        const std::size_t begin = i, many = std::min(stride, both - i);
        if (std::memcmp(mine + i, file.data() + i, many) == 0) {
            i += many;
            see(byte_range{address + begin, many}, difference::none);
            continue;
        }
        const bool same = mine[i] == file[i];
        while (i < begin + many && (mine[i] == file[i]) == same) ++i;
        see(byte_range{address + begin, i - begin}, same ? difference::none : difference::bytes_differ);
    }
    if (both < file.size()) see(byte_range{address + both, file.size() - both}, difference::only_in_file);
}

/// All of `range`, in the same way.
template <typename Visitor>
void comparison::walk(byte_range range, Visitor see) const
{
    std::size_t reached = range.first;
    const auto gap_to = [&](std::size_t end) {
        const std::size_t in_buffer = std::clamp(buffer_.size(), reached, end);
        if (in_buffer > reached) see(byte_range{reached, in_buffer - reached}, difference::only_in_buffer);
        if (end > in_buffer) see(byte_range{in_buffer, end - in_buffer}, difference::none);
    };
    file_.visit({range.first, range.length}, [&](std::uint64_t at, std::span<const std::uint8_t> bytes) {
        const auto address = static_cast<std::size_t>(at);
        gap_to(address);
        compare(address, bytes, see);
        reached = address + bytes.size();
    });
    gap_to(range.end());
}

bool comparison::look()
{
    if (compared_ == length_) return true;
    const byte_range piece = within({compared_, piece_bytes}, length_);
    bool border = false;
    walk(piece, [&](byte_range run, difference kind) {
        const bool begins = kind != last_kind_;
        border |= begins;
        last_kind_ = kind;
        if (kind == difference::only_in_buffer) counts_.only_in_buffer += run.length;
        if (kind == difference::only_in_file) counts_.only_in_file += run.length;
        if (kind != difference::bytes_differ) return;
        counts_.different_bytes += run.length;
        if (begins) ++counts_.different_places;
    });
    has_border_.push_back(border);
    compared_ = piece.end();
    return compared_ == length_;
}

int comparison::percent() const { return length_ == 0 ? 100 : static_cast<int>(compared_ * 100 / length_); }

/// The first or the last address in `where` of this piece at which another kind begins.
std::optional<std::size_t> comparison::border_in(std::size_t piece, byte_range where, bool last) const
{
    if (!has_border_[piece]) return std::nullopt;
    const byte_range range = within({piece * piece_bytes, piece_bytes}, length_);
    difference before = range.first == 0 ? difference::none : at(range.first - 1);
    std::optional<std::size_t> found;
    walk(range, [&](byte_range run, difference kind) {
        if (kind != before && where.contains(run.first) && (last || !found)) found = run.first;
        before = kind;
    });
    return found;
}

/// The end of all is one.
std::size_t comparison::border_after(std::size_t address) const
{
    const byte_range where{address + 1, length_};
    for (std::size_t piece = piece_of(address + 1); piece < has_border_.size(); ++piece) {
        if (const auto found = border_in(piece, where, false)) return *found;
    }
    return length_;
}

std::optional<std::size_t> comparison::border_before(std::size_t address) const
{
    const byte_range where = within({0, address}, length_);
    if (where.empty()) return std::nullopt;
    for (std::size_t piece = piece_of(where.length - 1) + 1; piece-- > 0;) {
        if (const auto found = border_in(piece, where, true)) return found;
    }
    return std::nullopt;
}

std::optional<different_place> comparison::next(std::size_t address) const
{
    std::size_t border = border_after(address);
    if (border < length_ && at(border) == difference::none) border = border_after(border);
    if (border >= length_) return std::nullopt;
    return place_at(border);
}

std::optional<different_place> comparison::previous(std::size_t address) const
{
    auto border = border_before(address);
    if (border && at(*border) == difference::none) border = border_before(*border);
    if (!border) return std::nullopt;
    return place_at(*border);
}

std::optional<different_place> comparison::first() const
{
    if (length_ == 0) return std::nullopt;
    return at(0) != difference::none ? place_at(0) : next(0);
}

}  // namespace tamrix::editing
