// The timing diagram of a recording, as an SVG file and as letters. Both draw the lines that the analyzer's screen has.
#pragma once

#include "cli/capture.h"

#include <string>

namespace tamrix::cli {

/// A whole file. On the screen the sample at the left edge lies left of the picture; here it is the first one in it.
std::string svg_of(const capture_view& seen);

/// Two rows a channel and a ruler of three, each up to 80 columns wide. A column is a sample, a part of one or several
/// of them. `box_letters`: with letters of UTF-8 for lines; else ASCII.
std::string letters_of(const capture_view& seen, bool box_letters);

/// How many samples letters_of() shows with one in a column.
inline constexpr std::int32_t letter_columns = 76;

}  // namespace tamrix::cli
