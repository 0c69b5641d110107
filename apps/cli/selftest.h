// tamrix selftest: the self-test dialogs, on the simulated programmer.
#pragma once

#include "cli/console.h"
#include "cli/selftest_options.h"

#include <cstdint>

namespace tamrix::cli {

/// Runs one item of the model's dialog, or lists the items. Throws command_error.
void selftest(const selftest_options& options, std::int32_t language, console& con);

}  // namespace tamrix::cli
