// The head of an Intel HEX record: what stands between ":" and the data.
#pragma once

#include "transfer/rwfile/hex_digits.h"

#include <array>
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

/// The head of the record whose ":" stands at `colon`; none where one of the eight characters behind it is no digit.
inline std::optional<intel_head> intel_head_at(std::span<const std::uint8_t> file, std::size_t colon)
{
    constexpr std::size_t head_digits = 8;
    if (colon + head_digits >= file.size()) return std::nullopt;
    std::array<std::uint8_t, head_digits / 2> field{};
    unsigned sum = 0;
    if (!hex_digits::decode(&file[colon + 1], field.size(), field.data(), sum)) return std::nullopt;
    return intel_head{field[0], field[1] * 256u + field[2], field[3]};
}

}  // namespace tamrix
