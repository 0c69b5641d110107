// tamrix convert: files are verified and go into one file, at their addresses or through a device's buffer.
#pragma once

#include "cli/console.h"
#include "cli/convert_options.h"

namespace tamrix::cli {

/// Throws command_error.
void convert(const convert_options& options, console& con);

}  // namespace tamrix::cli
