// tamrix detect: the format that a host would pass for a file.
#pragma once

#include "cli/console.h"

#include <string>
#include <vector>

namespace tamrix::cli {

/// Prints "FILE: INDEX NAME" for each file, with "-" for the index of fuse and SVF files, which go through methods of
/// their own. A file that cannot be read is told and passed over; throws command_error at the end then.
void detect(const std::vector<std::string>& files, console& con);

}  // namespace tamrix::cli
