#include "cli/output_place.h"

#include "base/native_path.h"

#include <filesystem>
#include <system_error>

namespace tamrix::cli {

namespace {

void refuse_missing_folder(const std::string& path)
{
    const auto folder = std::filesystem::path{native_path(path)}.parent_path();
    std::error_code none;
    if (!folder.empty() && !std::filesystem::exists(folder, none))
        fail(path + ": the folder " + folder.string() + " does not exist");
}

}  // namespace

output_place::output_place(const std::string& word) : name_{word == "-" ? "standard output" : word}
{
    if (word == "-") return;
    refuse_missing_folder(word);
    try {
        file_ = std::make_unique<file_replacement>(word);
    } catch (const file_error& error) {
        fail(error.what());
    }
}

}  // namespace tamrix::cli
