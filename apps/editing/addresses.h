// The addresses that a person types.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tamrix::editing {

/// "1F0" and "0x1F0", in hexadecimal, with blanks at either end; none where it is nothing of the kind or has more than
/// 16 digits.
std::optional<std::uint64_t> hexadecimal_in(std::string_view typed);

/// An address in a buffer of `bytes` bytes: "1F0", or with a sign as far from `here`, "+20" and "-20". None where it
/// is nothing of the kind or lies outside.
std::optional<std::size_t> address_in(std::string_view typed, std::size_t here, std::size_t bytes);

}  // namespace tamrix::editing
