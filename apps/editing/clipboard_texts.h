// Bytes as the texts that people copy, and back.
#pragma once

#include "editing/cursor.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::editing {

/// As many bytes as can be copied; more would fill the clipboard with text of several times their size.
inline constexpr std::size_t most_copied_bytes = 16 * 1024 * 1024;

/// "00 01 02", 16 bytes a line.
std::string hexadecimal_text(std::span<const std::uint8_t> bytes);
/// As the view shows them: a point for what is no printable character of ASCII.
std::string characters_text(std::span<const std::uint8_t> bytes);
/// "const unsigned char bytes[3] = {", 12 bytes a line.
std::string c_array_text(std::span<const std::uint8_t> bytes);
/// Intel HEX records of the bytes at their addresses, which begin with `address`.
std::string intel_hex_text(std::span<const std::uint8_t> bytes, std::size_t address);

struct pasted_bytes {
    std::vector<std::uint8_t> bytes{};
    std::string trouble{};  // why there are none
};

/// The bytes of a text. In the characters' column they are its letters in UTF-8. In the other one they are in
/// hexadecimal: pairs of digits with or without blanks between, "0x" before and commas or semicolons after a byte; a C
/// array, of which only what is inside its braces counts, without decimals; or the records of Intel HEX without gaps,
/// at whatever address.
pasted_bytes bytes_of_text(std::string_view text, column side);

}  // namespace tamrix::editing
