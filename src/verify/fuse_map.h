// What a JEDEC fuse file holds, whatever its layout.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tamrix {

/// A field that is kept as it is: its letter and the text after it.
struct kept_field {
    char letter;
    std::string text;

    bool operator==(const kept_field&) const = default;
};

struct fuse_map {
    static constexpr std::uint32_t most_fuses = 0x1000000;

    std::string header{};               // the text ahead of the first field, line ends included
    std::vector<std::uint8_t> fuses{};  // 0 or 1, in the order of their numbers
    bool default_fuse = false;          // the state of those that no row has
    std::optional<std::uint32_t> pins{};
    std::vector<std::string> vectors{};  // a condition a pin, in the order of the file
    std::vector<kept_field> others{};    // in the order of the file: A D E G J N P R S T U X
};

/// The 16-bit sum of the fuses' bytes; the first fuse is the lowest bit of the first byte.
std::uint16_t fuse_checksum(const std::vector<std::uint8_t>& fuses);

/// The 16-bit sum of the characters from STX to ETX. The standard leaves the parity bit out.
std::uint16_t transmission_checksum(const std::string& text);

}  // namespace tamrix
