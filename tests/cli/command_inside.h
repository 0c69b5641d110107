// Runs a tamrix command inside the test, which is quicker than a process of its own.
#pragma once

#include "cli/run_command.h"

namespace tamrix::tests {

/// In this working folder; empty: that of the test. Checks that nothing is left in shared memory.
command_result command_inside(const std::vector<std::string>& arguments, const std::string& folder = {});

}  // namespace tamrix::tests
