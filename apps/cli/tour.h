// tamrix tour: what the program does, shown on sample data.
#pragma once

#include "cli/console.h"

namespace tamrix::cli {

/// Throws command_error where a step does not come out as it must.
void tour(console& con);

}  // namespace tamrix::cli
