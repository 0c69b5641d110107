#include "host/user_folder.h"

#include "files/file_io.h"
#include "files/replace_file.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace tamrix::host {

namespace {

namespace fs = std::filesystem;

/// No half of a file is taken for a library at any time.
void copy_whole(const std::string& from, const std::string& to)
{
    const file_image content{from};
    replace_file(to, {reinterpret_cast<const char*>(content.bytes().data()), content.bytes().size()});
}

/// A library is never empty; an empty file is left by opening one that was not there.
bool is_missing(const fs::path& library)
{
    std::error_code error;
    const auto length = fs::file_size(library, error);
    return error ? !fs::exists(library) : length == 0;
}

void copy_missing(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::create_directories(to, error);
    if (error) throw std::runtime_error{to.string() + ": " + error.message()};
    std::error_code none_installed;
    for (fs::directory_iterator at{from, none_installed}, end; !none_installed && at != end;
         at.increment(none_installed)) {
        const fs::path own = to / at->path().filename();
        if (at->is_regular_file(error) && is_missing(own)) copy_whole(at->path().string(), own.string());
    }
}

std::string free_name(const std::string& wanted)
{
    std::string name = wanted;
    for (int number = 2; fs::exists(fs::symlink_status(name)); ++number) name = wanted + "-" + std::to_string(number);
    return name;
}

}  // namespace

std::string user_data_folder()
{
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && *data != '\0') return (fs::path{data} / "tamrix").string();
    const char* home = std::getenv("HOME");
    return (fs::path{home != nullptr ? home : "."} / ".local" / "share" / "tamrix").string();
}

std::string own_logic_libraries(const std::string& installed)
{
    const fs::path own = user_data_folder();
    for (const char* folder : {"lib", "lib1"}) copy_missing(fs::path{installed} / folder, own / folder);
    return own.string() + "/";
}

library_reset reset_library(const std::string& installed, const std::string& own)
{
    const file_image sound{installed};
    library_reset done{true, ""};
    if (!is_missing(own)) {
        done.changed = !std::ranges::equal(sound.bytes(), file_image{own}.bytes());
        if (!done.changed) return done;
        done.kept_as = free_name(own + ".before-reset");
        copy_whole(own, done.kept_as);
    }
    copy_whole(installed, own);
    return done;
}

}  // namespace tamrix::host
