// Runs a tamrix command inside the test, which is quicker than a process of its own.
#pragma once

#include "cli/run_command.h"

namespace tamrix::tests {

command_result command_inside(const std::vector<std::string>& arguments);

}  // namespace tamrix::tests
