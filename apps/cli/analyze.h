// tamrix analyze: records what is at P21 to P28 of the simulated programmer, and looks at such recordings.
#pragma once

#include "cli/analyze_options.h"
#include "cli/console.h"

#include <cstdint>

namespace tamrix::cli {

/// All throw command_error, and std::runtime_error for a file.
void analyze_record(const record_options& options, std::int32_t language, console& con);
void analyze_draw(const capture_options& options, console& con);
void analyze_info(const capture_options& options, console& con);

}  // namespace tamrix::cli
