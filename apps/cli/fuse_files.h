// tamrix jedec and tamrix svf: the files of logic devices.
#pragma once

#include "cli/console.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix::cli {

struct jedec_options {
    std::string in;  // "-" is standard input, as standard output for `out`
    std::optional<std::string> out;
    std::optional<std::string> words;  // as typed; default: what the file's QF field says, or its rows
    std::string page = "32";
    std::string type;
    std::string maker;
    bool as_plug_in = false;
    bool accept_damage = false;
};

struct svf_options {
    std::string in, syspath;
    bool accept_damage = false;
};

/// The number after a field name such as "QF" in the file; none if there is no such field or the number is not from 1
/// to `most`. Throws file_error.
std::optional<std::int64_t> told_number(const std::string& path, std::string_view field, std::int64_t most);

/// Verifies a file, prints a summary, and writes its fuses and vectors to `out` if there is one: in the standard's own
/// form, or as the plug-in does.
void jedec(const jedec_options& options, std::int32_t language, console& con);

/// Verifies an SVF file and copies it to "pldtmp.svf" under the system path.
void svf(const svf_options& options, std::int32_t language, console& con);

}  // namespace tamrix::cli
