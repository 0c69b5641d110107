// The chips of the data files, and how one of them becomes a part for the socket.
#pragma once

#include "chips/circuit.h"
#include "part.h"

#include <filesystem>
#include <memory>

namespace tamrix::sim {

struct chip {
    std::string file;  // where it stands
    int line = 0;
    std::string name, description;
    std::vector<std::string> aliases;  // devices with the same pins and the same function
    std::shared_ptr<const circuit> plan;
};

/// The chips of one file's text. Throws chip_error.
std::vector<chip> read_chips(std::string_view text, std::string_view file);

/// The chips of all files, in order. Throws chip_error where one is wrong, cannot be read, or where a name stands
/// twice.
std::vector<chip> load_chips(const std::vector<std::filesystem::path>& files);

/// Every *.chip file of a folder, by name. Throws chip_error where the folder cannot be read.
std::vector<std::filesystem::path> chip_files(const std::filesystem::path& folder);

/// By name or alias, without regard to case; null where there is none.
const chip* find_chip(const std::vector<chip>& chips, std::string_view name);

/// The chip as a part. Its registers are 0 at power up; an input at `open` counts as high.
std::unique_ptr<part> make_part(const chip& from);

}  // namespace tamrix::sim
