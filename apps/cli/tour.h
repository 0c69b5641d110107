// tamrix tour: shows what tamrix does, on sample data.
#pragma once

#include "cli/console.h"

namespace tamrix::cli {

/// Throws command_error if a step has an unexpected result.
void tour(console& con);

}  // namespace tamrix::cli
