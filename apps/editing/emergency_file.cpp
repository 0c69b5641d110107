#include "editing/emergency_file.h"

#include "files/file_io.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix::editing {

namespace {

namespace fs = std::filesystem;

constexpr const char* found_ending = ".copy";
constexpr const char* coming_ending = ".coming";

[[noreturn]] void fail(const std::string& path)
{
    throw std::runtime_error{path + ": " + std::generic_category().message(errno)};
}

/// Another program may look for unfinished files between the two steps and take this one away; then the next one is
/// made.
locked_file make_file(const std::string& folder, std::string& path)
{
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    for (;;) {
        path = folder + "/unsaved-" + std::to_string(getpid()) + "-XXXXXX" + coming_ending;
        const int made = mkostemps(path.data(), static_cast<int>(std::string_view{coming_ending}.size()), O_CLOEXEC);
        if (made < 0) fail(folder);
        locked_file file{made};
        if (file.lock()) return file;
    }
}

abandoned_copy read_copy(const std::string& path, locked_file lock)
{
    abandoned_copy found{.path = path, .lock = std::move(lock)};
    try {
        const file_image image{path};
        if (const auto last = find_commit(image.bytes())) {
            found.state = last->state;
            found.time = last->time;
        } else {
            found.fault = path + ": the copy is damaged: no part of it is whole";
        }
    } catch (const std::exception& reason) {
        found.fault = reason.what();
    }
    return found;
}

}  // namespace

locked_file::~locked_file()
{
    if (descriptor_ >= 0) ::close(descriptor_);
}

bool locked_file::lock() const
{
    struct stat now {};
    return flock(descriptor_, LOCK_EX | LOCK_NB) == 0 && fstat(descriptor_, &now) == 0 && now.st_nlink > 0;
}

emergency_file::emergency_file(const std::string& folder) : file_{make_file(folder, path_)} {}

void emergency_file::append(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(file_.descriptor(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) fail(path_);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        length_ += static_cast<std::size_t>(count);
    }
}

void emergency_file::publish(const emergency_file* former)
{
    const std::string name =
        former != nullptr ? former->path_ : fs::path{path_}.replace_extension(found_ending).string();
    if (std::rename(path_.c_str(), name.c_str()) != 0) fail(path_);
    path_ = name;
}

void emergency_file::cut_to_kept() noexcept
{
    // Where it cannot be cut off, its reader passes over what is not whole.
    if (ftruncate(file_.descriptor(), static_cast<off_t>(kept_)) == 0) length_ = kept_;
    lseek(file_.descriptor(), 0, SEEK_END);
}

void emergency_file::remove() noexcept { ::unlink(path_.c_str()); }

std::vector<abandoned_copy> abandoned_copies(const std::string& folder)
{
    std::vector<abandoned_copy> found;
    std::error_code error;
    for (fs::directory_iterator at{folder, error}; !error && at != fs::directory_iterator{}; at.increment(error)) {
        const std::string ending = at->path().extension().string(), path = at->path().string();
        if (ending != found_ending && ending != coming_ending) continue;
        locked_file file{::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW)};
        if (file.descriptor() < 0 || !file.lock()) continue;
        if (ending == coming_ending) {
            ::unlink(path.c_str());
        } else {
            found.push_back(read_copy(path, std::move(file)));
        }
    }
    std::ranges::sort(found, std::greater{}, &abandoned_copy::time);
    return found;
}

std::vector<std::uint8_t> recover(const abandoned_copy& copy)
{
    if (!copy.fault.empty()) throw std::runtime_error{copy.fault};
    const file_image image{copy.path};
    const auto last = find_commit(image.bytes());
    if (!last) throw std::runtime_error{copy.path + ": the copy was damaged meanwhile"};
    return bytes_of(*last, image.bytes());
}

void discard(const abandoned_copy& copy) noexcept { ::unlink(copy.path.c_str()); }

}  // namespace tamrix::editing
