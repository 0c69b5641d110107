#include "host/data_folder.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace tamrix::host {

std::string data_folder()
{
    namespace fs = std::filesystem;
    if (const char* named = std::getenv("TAMRIX_DATA"); named != nullptr && *named != '\0') return named;
    std::error_code none;
    const fs::path program = fs::read_symlink("/proc/self/exe", none);
    const fs::path installed = program.parent_path().parent_path() / "share" / "tamrix";
    return !none && fs::is_directory(installed, none) ? installed.string() : TAMRIX_SOURCE_DATA;
}

}  // namespace tamrix::host
