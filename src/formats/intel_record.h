// The head of an Intel HEX record: what is between ":" and the data.
#pragma once

#include "files/hex_digits.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tamrix {

struct intel_head {
    unsigned length;   // the count field
    unsigned address;  // 16 bits
    unsigned type;

    /// What the head adds to the record's byte sum.
    unsigned sum() const { return length + (address >> 8) + (address & 0xFF) + type; }
};

/// The longest record, with ":" and line end. The count of an Intel Hex16 record is in words.
inline constexpr std::size_t longest_intel_record = 1 + 8 + 2 * 255 + 2 + 2;
inline constexpr std::size_t longest_intel16_record = 1 + 8 + 4 * 255 + 2 + 2;

/// The head of the record at the start of `text`; none if there is no ":" or one of the eight characters after it is no
/// digit.
inline std::optional<intel_head> intel_head_of(std::span<const std::uint8_t> text)
{
    constexpr std::size_t head_digits = 8;
    if (text.size() <= head_digits || text[0] != ':') return std::nullopt;
    const auto fields = hex_digits::decode_four(&text[1]);
    if (!fields) return std::nullopt;
    const auto field = [&](int number) { return *fields >> 8 * number & 0xFF; };
    return intel_head{field(0), field(1) << 8 | field(2), field(3)};
}

}  // namespace tamrix
