// What a person keeps of their own: the libraries of logic devices.
#pragma once

#include <string>

namespace tamrix::host {

/// "tamrix" in XDG_DATA_HOME, or in .local/share of the home folder. Ends without a separator; need not exist.
std::string user_data_folder();

/// The folder that a host hands to the methods of the logic test, with "/" at its end: the person's own. Libraries of
/// the folder `installed` that are missing there, or are empty, are copied; one that is there stays as it is. Throws
/// std::runtime_error.
std::string own_logic_libraries(const std::string& installed);

}  // namespace tamrix::host
