// What the workbench says of the differences between buffer and file.
#pragma once

#include "editing/comparison.h"

#include <optional>
#include <string>

namespace tamrix::workbench {

/// "12 bytes differ at 3 places; 4 bytes only in the file", "No byte differs".
std::string difference_words(const editing::difference_counts& counts);
/// "0x10 to 0x1F: 16 bytes differ"; of no place, that there is none.
std::string place_words(const std::optional<editing::different_place>& place);

}  // namespace tamrix::workbench
