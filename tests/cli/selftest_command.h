// Runs tamrix selftest.
#pragma once

#include "cli/command_inside.h"

namespace tamrix::tests {

inline command_result selftest(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "selftest");
    return command_inside(arguments);
}

/// As a process of its own.
inline command_result selftest(std::vector<std::string> arguments, const command_setting& setting)
{
    arguments.insert(arguments.begin(), "selftest");
    return tamrix_command(arguments, setting);
}

}  // namespace tamrix::tests
