// Puts a rewritten library in the place of the old one.
#pragma once

#include <string>
#include <string_view>

namespace tamrix {

/// At every moment the file holds the old content or the new one whole, also when the machine stops: the new file is
/// written beside the old one and takes its name in one step. It keeps owner and mode. Only where the folder takes no
/// new file is the old one emptied and written in place. New files that killed saves left beside the library go away.
/// Throws file_error; the old content stands then, unless it was written in place.
void save_library(const std::string& path, std::string_view content);

}  // namespace tamrix
