#include "base/wide_path_win32.h"
#include "files/file_io.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <utility>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

namespace tamrix {

namespace {

constexpr std::size_t largest_call = std::size_t{1} << 26;  // bytes of one read or write

bool is_folder(const std::wstring& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// A folder cannot be opened, and the run time's reason for that would mislead.
int open_file(const std::string& path, int flags)
{
    const std::wstring wide = wide_path(path);
    if (is_folder(wide)) throw file_error{path, EISDIR};
    const int file = ::_wopen(wide.c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (file < 0) throw file_error{path, errno};
    return file;
}

}  // namespace

input_file::input_file(const std::string& path) : path_{path}, file_{open_file(path, _O_RDONLY)}
{
    struct _stat64 info {};
    if (::_fstat64(file_, &info) != 0 || (info.st_mode & _S_IFMT) != _S_IFREG) {
        ::_close(file_);
        throw file_error{{.file = path_, .found = "a device where a file was expected"}};
    }
    length_ = info.st_size;
}

input_file::~input_file() { ::_close(file_); }

std::size_t input_file::read_at(std::int64_t offset, std::span<std::uint8_t> target)
{
    if (::_lseeki64(file_, offset, SEEK_SET) < 0) throw file_error{path_, errno};
    std::size_t done = 0;
    while (done < target.size()) {
        const auto part = target.subspan(done, std::min(target.size() - done, largest_call));
        const int got = ::_read(file_, part.data(), static_cast<unsigned>(part.size()));
        if (got < 0) throw file_error{path_, errno};
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

output_file::output_file(const std::string& path) : path_{path}, file_{open_file(path, _O_WRONLY | _O_CREAT | _O_TRUNC)}
{}

output_file::~output_file()
{
    if (file_ >= 0) ::_close(file_);
}

void output_file::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), largest_call));
        const int put = ::_write(file_, part.data(), static_cast<unsigned>(part.size()));
        if (put < 0) throw file_error{path_, errno};
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

void output_file::write_at(std::int64_t offset, std::span<const std::uint8_t> bytes)
{
    if (::_lseeki64(file_, offset, SEEK_SET) < 0) throw file_error{path_, errno};
    write(bytes);
}

void output_file::close()
{
    if (::_close(std::exchange(file_, -1)) != 0) throw file_error{path_, errno};
}

bool exists_or_is_made(const std::string& path)
{
    const std::wstring wide = wide_path(path);
    if (::GetFileAttributesW(wide.c_str()) != INVALID_FILE_ATTRIBUTES) return true;
    const int file = ::_wopen(wide.c_str(), _O_RDWR | _O_CREAT | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (file < 0) return false;
    ::_close(file);
    return true;
}

std::string file_time_text(const std::string& path)
{
    struct _stat64 info {};
    std::tm local{};
    if (::_wstat64(wide_path(path).c_str(), &info) != 0 || ::_localtime64_s(&local, &info.st_mtime) != 0) return {};
    std::array<char, 100> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%x %X", &local)};
}

}  // namespace tamrix
