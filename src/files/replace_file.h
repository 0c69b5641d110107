// Puts a new content in the place of a file's old one.
#pragma once

#include <string>
#include <string_view>

namespace tamrix {

/// At every moment the file holds the old content or the new one whole, also when the machine stops: the new file is
/// written beside the old one and takes its name in one step. It keeps owner, mode and links; a file that is not there
/// yet is made. Only where the folder takes no new file is the old one emptied and written in place; so is a device or
/// a pipe. New files that killed saves left beside it go away. Throws file_error; the old content is still there then,
/// unless it was written in place.
void replace_file(const std::string& path, std::string_view content);

}  // namespace tamrix
