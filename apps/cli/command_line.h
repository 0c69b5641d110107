// The arguments of the `tamrix` command and its subcommands.
#pragma once

#include "cli/console.h"

#include <string>
#include <vector>

namespace tamrix::cli {

/// Runs one command. `arguments` do not include the program's name. Returns the exit status; throws nothing.
int run(const std::vector<std::string>& arguments, console& con);

}  // namespace tamrix::cli
