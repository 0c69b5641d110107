// Numbers among the words of the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix::cli {

/// The decimal whole number that a word is; none for any other word, and outside `least` to `most`.
std::optional<std::int32_t> number_in(std::string_view word, std::int32_t least, std::int32_t most);

/// As that, for an option. Throws command_error, "--banks 17: a number from 0 to 16 is expected".
std::int32_t checked_number(const std::string& option, const std::string& word, std::int32_t least, std::int32_t most);

/// The hexadecimal number that a word is; "0x" before it is allowed.
std::optional<std::int64_t> hexadecimal_in(std::string_view word);

/// As that, for an option as the dialogs take them; none if there is no word. Throws command_error.
std::optional<std::int64_t> checked_hexadecimal(std::string_view option, const std::optional<std::string>& word);

/// A decimal number, or a hexadecimal one after "0x"; none if there is no word. Throws command_error.
std::optional<std::int64_t> checked_count(std::string_view option, const std::optional<std::string>& word,
                                          std::int64_t least, std::int64_t most);

}  // namespace tamrix::cli
