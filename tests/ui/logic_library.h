// A vector library with more devices than a list shows at once.
#pragma once

#include "support/temp_files.h"

#include <filesystem>
#include <string>

namespace tamrix::tests {

inline void write_logic_library(const temp_folder& folder)
{
    constexpr int devices = 60;
    std::string directory, records;
    for (int i = 0; i < devices; ++i) {
        const std::string name = std::to_string(7400 + i);
        directory += static_cast<char>(name.size()) + name;
        records += "$" + name + "        02\x02" + "04\x04GHLV*\r\n";
    }
    std::filesystem::create_directories(folder.path("lib"));
    folder.write("lib/test.lib", "$KSM LIB001003C" + directory + "*\r\n" + records + "end-ksm\r\n");
}

}  // namespace tamrix::tests
