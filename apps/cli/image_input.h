// Files read strictly into an image: recognised, verified, put where their words say.
#pragma once

#include "cli/console.h"
#include "cli/input_word.h"
#include "cli/remarks.h"
#include "host/image_text.h"
#include "image/memory_image.h"
#include "verify/verification.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tamrix::cli {

struct image_file {
    std::string name;     // as it is shown; "standard input" for that
    std::string format;   // by its name on the command line
    verification found;   // its segments are at the addresses of the file
    segment_list filled;  // at the addresses of the image
};

/// What is done where two files fill the same address.
enum class overlap_rule { refuse, last };

struct image_inputs {
    memory_image image;
    std::vector<image_file> files;
};

/// Reads all files; `format` is an index of formats(), none to detect it. Throws command_error where a file cannot be
/// read, where two files fill the same address, and where there is nothing in a file. Damage is not judged here.
image_inputs read_inputs(const std::vector<input_word>& inputs, std::optional<int> format, overlap_rule overlap);

/// What a strict reading of one file finds; its data are left. Throws command_error as read_inputs() does.
image_file verified(const input_word& input, std::optional<int> format);

/// Reads one file into an image. Throws command_error as read_inputs() does.
image_file read_image(const input_word& input, std::optional<int> format, memory_image& into);

/// Shows each remark of the files, up to ten a file, and fails unless damage is accepted.
void judge(std::span<const image_file> files, bool accept_damage, console& con);
inline void judge(const image_file& file, bool accept_damage, console& con) { judge({&file, 1}, accept_damage, con); }

using host::address_text;
using host::bytes_text;
using host::extent_text;
using host::range_text;

}  // namespace tamrix::cli
