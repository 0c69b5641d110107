#include "host/user_folder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <unistd.h>

namespace tamrix::host {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, const std::error_code& why)
{
    throw std::runtime_error{path.string() + ": " + why.message()};
}

/// By way of a name of its own, so that no half of a file is taken for a library. Of two programs that do so at once
/// the first one counts.
void copy_whole(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    const fs::path part = to.string() + "." + std::to_string(::getpid());
    fs::copy_file(from, part, fs::copy_options::overwrite_existing, error);
    if (!error) fs::permissions(part, fs::perms::owner_write, fs::perm_options::add, error);
    if (!error) fs::rename(part, to, error);
    std::error_code ignored;
    if (error) fs::remove(part, ignored);
    if (error) fail(to, error);
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
    if (error) fail(to, error);
    std::error_code none_installed;
    for (fs::directory_iterator at{from, none_installed}, end; !none_installed && at != end;
         at.increment(none_installed)) {
        const fs::path own = to / at->path().filename();
        if (at->is_regular_file(error) && is_missing(own)) copy_whole(at->path(), own);
    }
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

}  // namespace tamrix::host
