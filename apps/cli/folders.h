// Folders as a person names them.
#pragma once

#include <string>

namespace tamrix::cli {

/// The folder, ended by a separator. An empty word throws command_error "OPTION: the name of a folder is expected".
std::string folder_word(const std::string& option, std::string folder);

/// Throws command_error "out/x.bin: the folder out does not exist" where the folder of the file is missing.
void check_folder_of(const std::string& file);

/// That text; empty where the folder exists.
std::string missing_folder_of(const std::string& file);

}  // namespace tamrix::cli
