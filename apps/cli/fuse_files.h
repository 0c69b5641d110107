// tamrix jedec and tamrix svf: the files of logic devices.
#pragma once

#include "cli/console.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix::cli {

struct jedec_options {
    std::string in;
    std::optional<std::string> out;
    std::optional<std::string> words;  // as typed; default: what the file's QF field says
    std::string page = "32";
    std::string type;
    std::string maker;
};

/// The number after a field name such as "QF" in the file; none if there is no such field or the number is not from 1
/// to `most`. Throws file_error.
std::optional<std::int64_t> told_number(const std::string& path, std::string_view field, std::int64_t most);

/// Reads the fuses and vectors of a file, prints a summary, and writes them to `out` if there is one.
void jedec(const jedec_options& options, std::int32_t language, console& con);

/// Copies an SVF file to "pldtmp.svf" under `syspath`.
void svf(const std::string& in, const std::string& syspath, std::int32_t language, console& con);

}  // namespace tamrix::cli
