// tamrix info, compare and dump: what files hold.
#pragma once

#include "cli/console.h"
#include "cli/image_options.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tamrix::cli {

struct file_words {
    std::vector<std::string> files;
    std::optional<std::string> from, device_bytes;
    image_words image;
    bool json = false, list = false;
};

void add_info_options(CLI::App& command, file_words& words);
void add_compare_options(CLI::App& command, file_words& words);
void add_dump_options(CLI::App& command, file_words& words);

/// What each file holds, and its damage, for which the command fails after the last file.
void info(const file_words& words, console& con);
/// Fails where the two files differ.
void compare(const file_words& words, console& con);
/// Sixteen bytes a line; an empty line for a gap.
void dump(const file_words& words, console& con);

}  // namespace tamrix::cli
