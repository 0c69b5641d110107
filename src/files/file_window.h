// A file seen through a window that moves along it, so that a file of any length is read once, with little memory.
#pragma once

#include "files/file_io.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tamrix {

/// From this length on, the addresses of a text file are estimated from its first and its last part; a part fits the
/// window.
inline constexpr std::int64_t shortest_estimated_bytes = std::int64_t{1} << 20;
inline constexpr std::int64_t estimate_part_bytes = 250000;

class file_window {
public:
    /// Throws file_error.
    explicit file_window(const std::string& path)
        : file_{path},
          window_bytes_{static_cast<std::size_t>(std::min<std::int64_t>(file_.length() + 1, largest_window))},
          bytes_{std::make_unique_for_overwrite<std::uint8_t[]>(window_bytes_)}
    {}

    std::int64_t length() const { return file_.length(); }

    /// The bytes from `offset` on: at least `wanted`, unless the file ends before. Valid until the next call. Throws
    /// file_error.
    std::span<const std::uint8_t> from(std::int64_t offset, std::size_t wanted)
    {
        const std::int64_t inside = offset - start_;
        if (inside < 0 || (inside + static_cast<std::int64_t>(wanted) > held_ && !at_end_) || inside > held_) {
            move_to(offset);
            return {bytes_.get(), static_cast<std::size_t>(held_)};
        }
        return {bytes_.get() + inside, static_cast<std::size_t>(held_ - inside)};
    }

    /// The offset of the next `byte`, from `offset` on; the length of the file if there is none.
    std::int64_t find(std::uint8_t byte, std::int64_t offset)
    {
        constexpr std::size_t line_end = 3;  // between two records there is usually nothing else
        if (offset < length()) {
            const auto near = from(offset, line_end);
            for (std::size_t i = 0; i < line_end && i < near.size(); ++i) {
                if (near[i] == byte) return offset + static_cast<std::int64_t>(i);
            }
        }
        return find_far(byte, offset);
    }
    /// The number, from 1, of the line that holds the byte at `offset`. Lines end with CR, LF or both.
    std::uint64_t line_at(std::int64_t offset);

private:
    static constexpr std::int64_t largest_window = std::int64_t{1} << 18;

    void move_to(std::int64_t offset);
    std::int64_t find_far(std::uint8_t byte, std::int64_t offset);

    input_file file_;
    std::size_t window_bytes_;
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::int64_t start_ = 0;
    std::int64_t held_ = 0;
    bool at_end_ = false;
};

}  // namespace tamrix
