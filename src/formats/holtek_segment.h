// One segment of a Holtek image.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tamrix {

inline constexpr std::uint8_t holtek_mark = 0xC0;

/// Offset of the first segment; none if the image has no Holtek header.
inline std::optional<std::size_t> first_holtek_segment(std::span<const std::uint8_t> image)
{
    constexpr std::size_t too_long = 0x8000;
    if (image.size() < 3 || image[0] != holtek_mark) return std::nullopt;
    const std::size_t length = image[1] + 256u * image[2];
    if (length >= too_long) return std::nullopt;
    return 3 + length;
}

/// Offsets are those of the image.
struct holtek_segment {
    std::size_t begin;      // its mark, "e"
    std::size_t length;     // of address, data and checksum
    std::uint32_t address;  // of the first segment; the second one's is not used

    std::size_t data() const { return begin + 7; }
    std::size_t data_bytes() const { return length < 5 ? 0 : length - 5; }
    std::size_t checksum() const { return begin + 2 + length; }
    std::size_t end() const { return checksum() + 1; }
};

/// The segment at `begin`; none if its mark or its head is missing.
inline std::optional<holtek_segment> holtek_segment_at(std::span<const std::uint8_t> image, std::size_t begin)
{
    if (begin + 7 > image.size() || image[begin] != 'e') return std::nullopt;
    const auto byte = [&](std::size_t offset) { return std::uint32_t{image[begin + offset]}; };
    return holtek_segment{begin, byte(1) | byte(2) << 8, byte(3) | byte(4) << 8 | byte(5) << 16 | byte(6) << 24};
}

}  // namespace tamrix
