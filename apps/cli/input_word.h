// How a file to read is named on the command line: FILE, or FILE@ADDRESS:BYTES for one that goes elsewhere.
#pragma once

#include <cstdint>
#include <string>

namespace tamrix::cli {

/// Byte `k` of the file, or its address k, goes to `address` + `step` * k + `phase`.
struct input_word {
    std::string path;  // "-" is standard input
    std::uint64_t address = 0;
    std::uint64_t step = 1, phase = 0;

    bool is_standard_input() const { return path == "-"; }
    bool is_placed() const { return address != 0 || step != 1; }
};

/// "app.bin@8000", "low.bin@:even", "high.bin@10000:3of4"; a file that has the whole name wins. Throws
/// command_error for what cannot be an address or a choice of bytes after "@".
input_word checked_input(const std::string& word);

}  // namespace tamrix::cli
