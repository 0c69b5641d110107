// Finds bytes in the buffer: what a person types, and where it is.
#pragma once

#include "editing/byte_range.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tamrix::editing {

/// "55 AA" and "55aa" are bytes in hexadecimal; anything else, and anything in double quotes, is UTF-8 text. Empty if
/// there is nothing to find.
std::vector<std::uint8_t> search_pattern(std::string_view typed);

enum class direction { forward, backward };

/// A search that is made in pieces, so that a window stays alive in a long buffer. It ends at the first place, and goes
/// on at the other end of the range where there is none up to its end.
class byte_finder {
public:
    /// The bytes must live as long as the finder. `start` is the first place to look at, where the pattern may begin.
    byte_finder(std::span<const std::uint8_t> bytes, std::vector<std::uint8_t> pattern, byte_range where,
                std::size_t start, direction way = direction::forward);

    /// Looks at the next 4 MiB at most; true once the search has ended.
    bool look();
    /// The place, after the end; none if the pattern does not occur.
    std::optional<std::size_t> found() const { return found_; }
    /// Whether it went on at the other end of the range.
    bool wrapped() const { return wrapped_; }
    /// 0 to 100.
    int percent() const;

private:
    std::optional<std::size_t> first_in(byte_range places) const;
    byte_range next_places() const;

    std::span<const std::uint8_t> bytes_;
    std::vector<std::uint8_t> pattern_;
    byte_range places_{};  // where the pattern may begin
    direction way_;
    std::size_t at_ = 0;    // forward the next place to look at, backward the one after it
    std::size_t left_ = 0;  // places to look at
    bool wrapped_ = false;
    std::optional<std::size_t> found_{};
};

/// The places of the pattern in `where`, from its first byte on, that do not overlap.
std::vector<std::size_t> all_places(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> pattern,
                                    byte_range where);

}  // namespace tamrix::editing
