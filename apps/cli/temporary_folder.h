// A private folder that exists as long as its object, and goes away also if a signal ends the command.
#pragma once

#include "cli/console.h"
#include "files/unfinished.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

#include <stdlib.h>

namespace tamrix::cli {

class temporary_folder {
public:
    temporary_folder()
    {
        std::error_code none;
        std::string pattern = (std::filesystem::temp_directory_path(none) / "tamrix-XXXXXX").string();
        const ending_held until_registered;
        if (none || ::mkdtemp(pattern.data()) == nullptr)
            fail("temporary folder: " + std::string{std::strerror(errno)});
        path_ = pattern + "/";
        unfinished_.hold(pattern);
    }
    ~temporary_folder()
    {
        std::error_code none;
        std::filesystem::remove_all(path_, none);
    }
    temporary_folder(const temporary_folder&) = delete;
    temporary_folder& operator=(const temporary_folder&) = delete;

    /// Ends with a separator.
    const std::string& path() const { return path_; }

private:
    std::string path_;
    unfinished unfinished_;
};

}  // namespace tamrix::cli
