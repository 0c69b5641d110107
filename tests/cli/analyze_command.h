// Runs tamrix analyze record.
#pragma once

#include "cli/command_inside.h"

namespace tamrix::tests {

inline command_result record_inside(const std::string& file, std::vector<std::string> arguments = {})
{
    arguments.insert(arguments.begin(), {"analyze", "record", "-o", file});
    return command_inside(arguments);
}

}  // namespace tamrix::tests
