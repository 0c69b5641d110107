// Copies an SVF file to the host's system path.
#pragma once

#include "base/diagnostic.h"

#include <cstdint>
#include <string>

namespace tamrix {

/// Copies `fname` line by line to `syspath` + "pldtmp.svf"; the path must end in a separator. Line ends become CR LF.
/// Yields 1 for an empty file, which leaves an older copy in place, else 0. A fault is left in `why_it_failed`.
std::int16_t read_svf(diagnostic& why_it_failed, const std::string& fname, const std::string& syspath);

}  // namespace tamrix
