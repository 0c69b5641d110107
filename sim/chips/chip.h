// The chips of the data files, and the part for the socket made from one.
#pragma once

#include "chips/circuit.h"
#include "part.h"

#include <filesystem>
#include <memory>

namespace tamrix::sim {

struct chip {
    std::string file;  // that contains it
    int line = 0;
    std::string name, description;
    std::vector<std::string> aliases;  // devices with the same pins and the same function
    std::shared_ptr<const circuit> plan;
};

/// The chips of one file's text. Throws chip_error.
std::vector<chip> read_chips(std::string_view text, std::string_view file);

/// The chips of all files, in order. Throws chip_error if a file is wrong or cannot be read, or if a name occurs twice.
std::vector<chip> load_chips(const std::vector<std::filesystem::path>& files);

/// Every *.chip file of a folder, by name. Throws chip_error if the folder cannot be read.
std::vector<std::filesystem::path> chip_files(const std::filesystem::path& folder);

/// By name or alias, ignoring case; null if there is none.
const chip* find_chip(const std::vector<chip>& chips, std::string_view name);

/// The chip as a part. Its registers are 0 at power up; an input at `open` counts as high.
std::unique_ptr<part> make_part(const chip& from);

/// The chips of a folder by name. The files are read at the first name.
part_shelf shelf_of_folder(std::filesystem::path folder);

}  // namespace tamrix::sim
