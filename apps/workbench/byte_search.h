// Finds bytes in the buffer: what a person types, and where it is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tamrix::workbench {

/// What a letter is worth as a hexadecimal digit; -1 if it is none.
int hex_digit(int letter);

/// "55 AA" and "55aa" are bytes in hexadecimal; anything else, and anything in double quotes, is UTF-8 text. Empty if
/// there is nothing to find.
std::vector<std::uint8_t> search_pattern(std::string_view typed);

/// The first place from `start` on, then from the beginning on; none if the pattern does not occur.
std::optional<std::size_t> find_bytes(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> pattern,
                                      std::size_t start);

}  // namespace tamrix::workbench
