#include "files/replace_file.h"

#include "base/native_path.h"
#include "files/file_io.h"
#include "files/unfinished.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <random>
#include <span>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix {

namespace {

/// Separates the name of the file from the letters that make one save unlike another.
constexpr std::string_view mark_of_a_save = ".saving-";
constexpr std::size_t letters_of_a_save = 6;

std::string fresh_name_beside(const std::string& target)
{
    constexpr std::string_view letters = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::random_device chance;
    std::string name = target + std::string{mark_of_a_save};
    for (std::size_t i = 0; i < letters_of_a_save; ++i) name += letters[chance() % letters.size()];
    return name;
}

/// A new file beside the old one, removed again unless it took the name of the file. A lock shows others that
/// it is in work.
class file_beside {
public:
    /// With the bits of `mode` that the process lets new files have.
    file_beside(const std::string& target, mode_t mode, const std::string& shown) : shown_{shown}
    {
        const ending_held until_registered;
        do {
            if (file_ >= 0) ::close(file_);
            name_ = fresh_name_beside(target);
            file_ = ::open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        } while (file_ >= 0 ? !hold() : errno == EEXIST);
        if (file_ >= 0) unfinished_.hold(name_);
    }
    ~file_beside()
    {
        if (file_ < 0) return;
        ::close(file_);
        if (!name_.empty()) ::unlink(name_.c_str());
    }
    file_beside(const file_beside&) = delete;
    file_beside& operator=(const file_beside&) = delete;

    bool is_open() const { return file_ >= 0; }
    /// False where the system does not let us: the new file would be somebody else's.
    bool take_owner_and_mode(const struct stat& old) const
    {
        return ::fchown(file_, old.st_uid, old.st_gid) == 0 && ::fchmod(file_, old.st_mode & 07777) == 0;
    }
    void write(std::span<const std::uint8_t> bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t put = ::write(file_, bytes.data(), bytes.size());
            if (put < 0 && errno == EINTR) continue;
            if (put < 0) throw file_error{shown_, errno};
            bytes = bytes.subspan(static_cast<std::size_t>(put));
        }
    }
    void flush() const
    {
        if (::fsync(file_) != 0) throw file_error{shown_, errno};
    }
    const std::string& name() const { return name_; }
    bool take_name(const std::string& target)
    {
        if (::rename(name_.c_str(), target.c_str()) != 0) return false;
        name_.clear();
        return true;
    }

private:
    /// False where somebody took the file for a leftover before it was locked, and removed it.
    bool hold() const
    {
        while (::flock(file_, LOCK_EX) != 0 && errno == EINTR) {
        }
        struct stat info {};
        return ::fstat(file_, &info) != 0 || info.st_nlink > 0;
    }

    std::string name_, shown_;  // shown in errors: nobody knows the other one
    int file_ = -1;
    unfinished unfinished_;
};

std::filesystem::path folder_of(const std::string& target)
{
    const std::filesystem::path folder = std::filesystem::path{target}.parent_path();
    return folder.empty() ? "." : folder;
}

/// `begin` is the file's name with the mark.
bool is_name_of_a_save(std::string_view name, std::string_view begin)
{
    const auto is_letter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    };
    return name.starts_with(begin) && name.size() == begin.size() + letters_of_a_save &&
           std::ranges::all_of(name.substr(begin.size()), is_letter);
}

void remove_unless_held(const std::filesystem::path& path)
{
    const int file = ::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return;
    struct stat locked {
    }, named{};
    // Its save may have ended in between: then the locked file is the target itself.
    if (::flock(file, LOCK_EX | LOCK_NB) == 0 && ::fstat(file, &locked) == 0 && S_ISREG(locked.st_mode) &&
        ::lstat(path.c_str(), &named) == 0 && named.st_dev == locked.st_dev && named.st_ino == locked.st_ino) {
        ::unlink(path.c_str());
    }
    ::close(file);
}

/// A save that was killed could not take its file away.
void remove_leftovers(const std::string& target)
{
    const std::string begin = std::filesystem::path{target}.filename().string().append(mark_of_a_save);
    std::error_code none;
    std::filesystem::directory_iterator entry{folder_of(target), none};
    for (; !none && entry != std::filesystem::directory_iterator{}; entry.increment(none)) {
        if (is_name_of_a_save(entry->path().filename().string(), begin)) remove_unless_held(entry->path());
    }
}

/// Makes the new name last across a power cut. The content is safe already, so a folder that cannot do it is no fault.
void flush_folder_of(const std::string& target)
{
    const int file = ::open(folder_of(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0) return;
    ::fsync(file);
    ::close(file);
}

/// A link to the file stays a link.
std::string where_links_lead(const std::string& path)
{
    std::error_code none;
    const auto real = std::filesystem::canonical(path, none);
    return none ? path : real.string();
}

}  // namespace

class file_replacement::work {
public:
    explicit work(const std::string& path) : path_{path}, target_{where_links_lead(native_path(path))}
    {
        // Whoever may not write the file may not replace it either.
        if (::access(target_.c_str(), W_OK) != 0 && errno != ENOENT) throw file_error{path, errno};
        struct stat old {};
        const bool is_new = ::stat(target_.c_str(), &old) != 0;
        if (is_new && errno != ENOENT) throw file_error{path, errno};
        if (!is_new && !S_ISREG(old.st_mode)) {
            in_place_.emplace(path);  // a device or a pipe, which has no old content
            return;
        }
        remove_leftovers(target_);
        fresh_.emplace(target_, is_new ? mode_t{0666} : mode_t{0600}, path);
        if (!fresh_->is_open() || (!is_new && !fresh_->take_owner_and_mode(old))) fresh_.reset();
        // Nothing can be made, beside it or in its place.
        if (is_new && !fresh_) output_file{path}.close();
    }

    void write(std::span<const std::uint8_t> bytes)
    {
        if (in_place_) {
            in_place_->write(bytes);
        } else if (fresh_) {
            fresh_->write(bytes);
        } else {
            waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
        }
    }

    void take_place(lasts through)
    {
        if (in_place_) return in_place_->close();
        if (!fresh_) return write_over(waiting_);
        if (through == lasts::power_cut) fresh_->flush();
        if (!fresh_->take_name(target_)) return write_over(file_image{fresh_->name()}.bytes());
        if (through == lasts::power_cut) flush_folder_of(target_);
    }

private:
    void write_over(std::span<const std::uint8_t> content) const
    {
        output_file file{path_};
        file.write(content);
        file.close();
    }

    std::string path_, target_;
    std::optional<file_beside> fresh_;
    std::optional<output_file> in_place_;
    std::vector<std::uint8_t> waiting_;
};

file_replacement::file_replacement(const std::string& path) : work_{std::make_unique<work>(path)} {}

file_replacement::~file_replacement() = default;

void file_replacement::write(std::span<const std::uint8_t> bytes) { work_->write(bytes); }

void file_replacement::take_place(lasts through) { work_->take_place(through); }

void replace_file(const std::string& path, std::string_view content)
{
    file_replacement file{path};
    file.write({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
    file.take_place(file_replacement::lasts::power_cut);
}

}  // namespace tamrix
