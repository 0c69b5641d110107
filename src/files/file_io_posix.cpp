#include "files/file_io.h"

#include "base/native_path.h"

#include <array>
#include <cerrno>
#include <ctime>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix {

namespace {

/// Repeats a call that a signal interrupted.
template <class Call>
auto persist(Call call)
{
    decltype(call()) result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

}  // namespace

// Without O_NONBLOCK a named pipe would hang the host until somebody writes to it.
input_file::input_file(const std::string& path)
    : path_{path}, file_{persist([&] { return ::open(native_path(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); })}
{
    if (file_ < 0) throw file_error{path_, errno};
    struct stat info {};
    if (::fstat(file_, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(file_);
        if (S_ISDIR(info.st_mode)) throw file_error{path_, EISDIR};
        throw file_error{{.file = path_, .found = "a device where a file was expected"}};
    }
    length_ = info.st_size;
}

input_file::~input_file() { ::close(file_); }

std::size_t input_file::read_at(std::int64_t offset, std::span<std::uint8_t> target)
{
    std::size_t done = 0;
    while (done < target.size()) {
        const auto part = target.subspan(done);
        const auto got = persist([&] {
            return ::pread(file_, part.data(), part.size(),
                           static_cast<off_t>(offset + static_cast<std::int64_t>(done)));
        });
        if (got < 0) throw file_error{path_, errno};
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

output_file::output_file(const std::string& path)
    : path_{path}, file_{persist([&] {
          return ::open(native_path(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
      })}
{
    if (file_ < 0) throw file_error{path_, errno};
}

output_file::~output_file()
{
    if (file_ >= 0) ::close(file_);
}

void output_file::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto put = persist([&] { return ::write(file_, bytes.data(), bytes.size()); });
        if (put < 0) throw file_error{path_, errno};
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

void output_file::write_at(std::int64_t offset, std::span<const std::uint8_t> bytes)
{
    if (::lseek(file_, static_cast<off_t>(offset), SEEK_SET) < 0) throw file_error{path_, errno};
    write(bytes);
}

void output_file::close()
{
    if (::close(std::exchange(file_, -1)) != 0) throw file_error{path_, errno};
}

bool exists_or_is_made(const std::string& path)
{
    const std::string native = native_path(path);
    if (::access(native.c_str(), F_OK) == 0) return true;
    const int file = ::open(native.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (file < 0) return false;
    ::close(file);
    return true;
}

std::string file_time_text(const std::string& path)
{
    struct stat info {};
    std::tm local{};
    if (::stat(native_path(path).c_str(), &info) != 0 || ::localtime_r(&info.st_mtime, &local) == nullptr) return {};
    std::array<char, 100> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%x %X", &local)};
}

}  // namespace tamrix
