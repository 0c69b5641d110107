// What differs between the bytes of a buffer and those of a file at the same addresses.
#pragma once

#include "editing/byte_range.h"
#include "image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tamrix::editing {

/// The file's bytes from this address on are counted, but are no places to go to.
inline constexpr std::uint64_t shown_addresses = std::uint64_t{1} << 32;

enum class difference : std::uint8_t { none, bytes_differ, only_in_buffer, only_in_file };

/// Neighbours with a difference of one kind.
struct different_place {
    byte_range where{};
    difference kind = difference::none;
    bool operator==(const different_place&) const = default;
};

struct difference_counts {
    std::uint64_t different_bytes = 0, different_places = 0;
    std::uint64_t only_in_buffer = 0, only_in_file = 0;  // bytes
    std::uint64_t above = 0;                             // those only in the file from shown_addresses on
    bool operator==(const difference_counts&) const = default;
};

/// Compares in pieces, so that a window stays alive, and keeps a bit for each piece, however much differs.
class comparison {
public:
    /// Both must outlive it, and stay as they are.
    comparison(std::span<const std::uint8_t> buffer, const memory_image& file);

    /// The address after the last byte of either; shown_addresses at most.
    std::size_t length() const { return length_; }
    /// The kind for an address below length().
    difference at(std::size_t address) const;

    /// Compares the next MiB at most; true once all is compared. What follows is whole then.
    bool look();
    /// 0 to 100.
    int percent() const;
    const difference_counts& counts() const { return counts_; }
    /// The place that begins next after the address, or last before it; none where there is no other.
    std::optional<different_place> next(std::size_t address) const;
    std::optional<different_place> previous(std::size_t address) const;
    /// The place that begins at address 0, or the next one.
    std::optional<different_place> first() const;

private:
    template <typename Visitor>
    void walk(byte_range range, Visitor see) const;
    template <typename Visitor>
    void compare(std::size_t address, std::span<const std::uint8_t> file, Visitor see) const;
    std::optional<std::size_t> border_in(std::size_t piece, byte_range where, bool last) const;
    std::size_t border_after(std::size_t address) const;
    std::optional<std::size_t> border_before(std::size_t address) const;
    different_place place_at(std::size_t border) const { return {{border, border_after(border) - border}, at(border)}; }

    std::span<const std::uint8_t> buffer_;
    const memory_image& file_;
    std::size_t length_;
    std::size_t compared_ = 0;
    difference last_kind_ = difference::none;  // of the byte before compared_
    std::vector<bool> has_border_{};           // for each piece, whether another kind begins there
    difference_counts counts_{};
};

}  // namespace tamrix::editing
