// The arguments of the `tamrix` command, and what each of its commands does with them.
#pragma once

#include "cli/console.h"

#include <string>
#include <vector>

namespace tamrix::cli {

/// Runs one command. `arguments` do not hold the program's name. Yields the exit status; throws nothing.
int run(const std::vector<std::string>& arguments, console& con);

}  // namespace tamrix::cli
