#include "workbench/settings_folder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace tamrix::workbench {

std::string settings_folder()
{
    namespace fs = std::filesystem;
    const char* settings = std::getenv("XDG_CONFIG_HOME");
    if (settings != nullptr && *settings != '\0') return (fs::path{settings} / "tamrix").string();
    const char* home = std::getenv("HOME");
    return (fs::path{home != nullptr ? home : "."} / ".config" / "tamrix").string();
}

std::string make_settings_folder()
{
    std::string folder = settings_folder();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw std::runtime_error{folder + ": " + error.message()};
    return folder;
}

}  // namespace tamrix::workbench
