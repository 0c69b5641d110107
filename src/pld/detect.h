// Detects fuse files and SVF files by their content.
#pragma once

#include <string>

namespace tamrix {

enum class pld_format { none, jedec, svf };

/// Looks at the start of the file. Throws file_error.
pld_format detect_pld_format(const std::string& path);

}  // namespace tamrix
