// Settings and temporary files of a test's own: nothing of the person who runs it is read or changed.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace tamrix::tests {

class own_settings {
public:
    own_settings() : folder{std::filesystem::temp_directory_path() / ("tamrix-settings-" + std::to_string(getpid()))}
    {
        setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
        setenv("XDG_CACHE_HOME", (folder / "cache").c_str(), 1);
        setenv("TAMRIX_NAMESPACE", ("own" + std::to_string(getpid()) + ".").c_str(), 1);
    }
    ~own_settings() { std::filesystem::remove_all(folder); }
    own_settings(const own_settings&) = delete;
    own_settings& operator=(const own_settings&) = delete;

    const std::filesystem::path folder;
};

}  // namespace tamrix::tests
