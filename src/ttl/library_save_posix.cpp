#include "ttl/library_save.h"

#include "base/native_path.h"
#include "transfer/file_io.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix {

namespace {

[[noreturn]] void fail(const std::string& path, int error)
{
    throw file_error{{.file = path, .found = std::strerror(error)}};
}

/// A new file beside the library, which goes away again unless it took the library's name.
class file_beside {
public:
    explicit file_beside(const std::string& library)
        : name_{library + ".XXXXXX"}, file_{::mkostemp(name_.data(), O_CLOEXEC)}
    {}
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
    void write(std::string_view content) const
    {
        while (!content.empty()) {
            const ssize_t put = ::write(file_, content.data(), content.size());
            if (put < 0 && errno == EINTR) continue;
            if (put < 0) fail(name_, errno);
            content.remove_prefix(static_cast<std::size_t>(put));
        }
        if (::fsync(file_) != 0) fail(name_, errno);
    }
    bool take_name(const std::string& library)
    {
        if (::rename(name_.c_str(), library.c_str()) != 0) return false;
        name_.clear();
        return true;
    }

private:
    std::string name_;
    int file_;
};

/// Makes the new name last across a power cut. The content is safe already, so a folder that cannot do it is no fault.
void flush_folder_of(const std::string& library)
{
    const std::filesystem::path folder = std::filesystem::path{library}.parent_path();
    const int file = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0) return;
    ::fsync(file);
    ::close(file);
}

/// False where the folder does not take the new file.
bool replace_in_one_step(const std::string& library, std::string_view content)
{
    struct stat old {};
    if (::stat(library.c_str(), &old) != 0) fail(library, errno);
    file_beside fresh{library};
    if (!fresh.is_open() || !fresh.take_owner_and_mode(old)) return false;
    fresh.write(content);
    if (!fresh.take_name(library)) return false;
    flush_folder_of(library);
    return true;
}

/// A link to the library stays a link.
std::string behind_links(const std::string& path)
{
    std::error_code none;
    const auto real = std::filesystem::canonical(path, none);
    return none ? path : real.string();
}

}  // namespace

void save_library(const std::string& path, std::string_view content)
{
    const std::string library = behind_links(native_path(path));
    // Whoever may not write the file may not replace it either.
    if (::access(library.c_str(), W_OK) != 0) fail(path, errno);
    if (replace_in_one_step(library, content)) return;
    output_file file{library};
    file.write({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
    file.close();
}

}  // namespace tamrix
