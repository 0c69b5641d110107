// The runs of the instruments that a separate model wrote, and the transcripts of the command in the same form.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tamrix::tests {

using run_lines = std::vector<std::string>;

/// The reviewed runs whose names begin so, in the order of the alphabet.
std::vector<std::filesystem::path> reviewed_runs(const std::string& start);
/// What a transcript says of calls and of what the dialog shows, as reviewed_lines() has it; not times, and not what
/// the programmer answers. A line that repeats more than three times in a row is there once, with the count.
run_lines calls_in(const std::string& transcript);
/// The parts of a name, "generator", "usb", "9", "1000".
std::vector<std::string> parts_of_name(const std::filesystem::path& file);

}  // namespace tamrix::tests
