// The folder of the person's own files.
#pragma once

#include <string>

namespace tamrix::workbench {

/// "tamrix" in XDG_CONFIG_HOME, or in .config of the home folder. Ends without a separator; need not exist.
std::string settings_folder();

/// As settings_folder, but created if it is missing. Throws std::runtime_error.
std::string make_settings_folder();

}  // namespace tamrix::workbench
