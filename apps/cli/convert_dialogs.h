// The part of `tamrix convert` that needs a device: a file goes through the load dialog into its buffer and out through
// the save dialog.
#pragma once

#include "cli/console.h"
#include "cli/convert_options.h"

namespace tamrix::cli {

/// Prints the status lines of the load and the save. Throws command_error.
void convert_through_dialogs(const convert_options& options, console& con);

}  // namespace tamrix::cli
