// A strict reading of a file in words: its damage, and what it holds.
#pragma once

#include "image/memory_image.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::host {

struct file_report {
    std::string path{}, format{};
    std::vector<std::string> remarks{};  // on its damage, ten at most and then their count
    std::uint64_t damaged_places = 0;
    std::vector<std::string> lines{};  // what it holds; the first line begins with its path
    memory_image image{};              // the bytes of a buffer file at the addresses of the file
    std::uint64_t fuses = 0;           // of a fuse file
};

/// Reads a file to its end. `format` is that of a buffer file by its name on the command line, or "jedec" or "svf".
/// Throws file_error if the file cannot be read, std::invalid_argument for another format, and std::bad_alloc.
file_report report_on(const std::string& path, std::string_view format);

/// "boot.hex is damaged at 3 places."
std::string damage_text(const file_report& report);

}  // namespace tamrix::host
