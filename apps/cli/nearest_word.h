// Which known word is nearest to one that is mistyped.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tamrix::cli {

/// The fewest letters to add, leave out, change or swap with their neighbour until one word is the other, no letter
/// twice. Upper and lower case are one.
int letters_apart(std::string_view one, std::string_view other);

/// The nearest of `known`, of equals the first; none where more than a third of the letters of `word` differ.
std::optional<std::string> nearest_word(std::string_view word, std::span<const std::string> known);

}  // namespace tamrix::cli
