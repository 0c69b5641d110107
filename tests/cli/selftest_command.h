// Runs tamrix selftest.
#pragma once

#include "cli/run_command.h"

namespace tamrix::tests {

inline command_result selftest(std::vector<std::string> arguments, const command_setting& setting = {})
{
    arguments.insert(arguments.begin(), "selftest");
    return tamrix_command(arguments, setting);
}

}  // namespace tamrix::tests
