// The fields of a JEDEC file that are kept as they are, and what may be in them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix::jedec_rules {

/// What the text of field `letter` should have been; none if it is right. Not for F L C Q V and P.
std::optional<std::string> expected_of_field(char letter, std::string_view text);

/// True of the letters that expected_of_field knows.
bool is_kept_field(int letter);

/// The first character that no test vector has; none if all are conditions. Blanks count as well.
std::optional<char> wrong_condition(std::string_view conditions);

std::string_view without_blanks_around(std::string_view text);

/// A decimal number with any blanks around it.
std::optional<std::uint64_t> number_of(std::string_view text);

/// A field as a remark shows it, cut where it is long.
std::string shown(char letter, std::string_view text);

}  // namespace tamrix::jedec_rules
