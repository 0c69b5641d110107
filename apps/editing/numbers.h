// The number that begins at the cursor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tamrix::editing {

enum class byte_order { little_endian, big_endian };

/// The number of `bits` (8, 16, 32 or 64) whose first byte is at `address`; false where the bytes end before it does.
bool number_at(std::span<const std::uint8_t> bytes, std::size_t address, int bits, byte_order order,
               std::uint64_t& number);

/// In decimals, and as a signed number where that is another one: "65535 (-1)".
std::string decimal_text(std::uint64_t number, int bits);

/// In hexadecimal with all its digits: "0x00FF".
std::string hexadecimal_number(std::uint64_t number, int bits);

}  // namespace tamrix::editing
