// tamrix wave: frequency meter and signal generator, on the simulated programmer.
#pragma once

#include "cli/console.h"
#include "cli/wave_options.h"

#include <cstdint>

namespace tamrix::cli {

/// Prints readings, with their mean and range. Throws command_error.
void wave_meter(const wave_options& options, std::int32_t language, console& con);
/// Prints what becomes of a frequency. Throws command_error.
void wave_generate(const wave_options& options, std::int32_t language, console& con);

}  // namespace tamrix::cli
