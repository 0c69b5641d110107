// tamrix detect: the format that a host would pass for a file.
#pragma once

#include "cli/console.h"

#include <string>
#include <vector>

namespace tamrix::cli {

/// Prints "FILE: INDEX NAME" for each file, with "-" as the index of fuse and SVF files, which have methods of their
/// own. Reports and skips a file that cannot be read, and then throws command_error at the end.
void detect(const std::vector<std::string>& files, console& con);

}  // namespace tamrix::cli
