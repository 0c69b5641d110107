// Settings and temporary files of a test's own: nothing of the person who runs it is read or changed.
#pragma once

#include "support/name_space.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace tamrix::tests {

class own_settings {
public:
    own_settings() : folder{std::filesystem::temp_directory_path() / ("tamrix-settings-" + mark_of_process())}
    {
        setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
        setenv("XDG_CACHE_HOME", (folder / "cache").c_str(), 1);
        setenv("TAMRIX_NAMESPACE", ("own" + mark_of_process() + ".").c_str(), 1);
    }
    ~own_settings() { std::filesystem::remove_all(folder); }
    own_settings(const own_settings&) = delete;
    own_settings& operator=(const own_settings&) = delete;

    const std::filesystem::path folder;
};

}  // namespace tamrix::tests
