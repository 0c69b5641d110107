#include "cli/folders.h"

#include "base/native_path.h"
#include "cli/console.h"

#include <filesystem>

namespace tamrix::cli {

namespace fs = std::filesystem;

std::string folder_word(const std::string& option, std::string folder)
{
    if (folder.empty()) refuse(option + ": the name of a folder is expected");
    if (!native_path(folder).ends_with('/')) folder += '/';
    return folder;
}

std::string missing_folder_of(const std::string& file)
{
    std::error_code unknown;
    fs::path missing;
    for (fs::path folder = fs::path{native_path(file)}.parent_path();
         !folder.empty() && !fs::exists(folder, unknown) && !unknown; folder = folder.parent_path())
        missing = folder;
    return missing.empty() ? "" : file + ": the folder " + missing.string() + " does not exist";
}

void check_folder_of(const std::string& file)
{
    const std::string missing = missing_folder_of(file);
    if (!missing.empty()) fail(missing);
}

}  // namespace tamrix::cli
