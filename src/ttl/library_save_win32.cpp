#include "base/wide_path_win32.h"
#include "files/file_io.h"
#include "ttl/library_save.h"

#include <cstdint>
#include <span>
#include <string>

#include <windows.h>

namespace tamrix {

namespace {

std::string name_beside(const std::string& library)
{
    return library + "." + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(::GetTickCount());
}

bool may_be_written(const std::string& library)
{
    // An administrator may open even what is marked as read-only.
    const DWORD attributes = ::GetFileAttributesW(wide_path(library).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) != 0) return false;
    const HANDLE file = ::CreateFileW(wide_path(library).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(file);
    return true;
}

void write_whole(const std::string& path, std::span<const std::uint8_t> bytes)
{
    output_file file{path};
    file.write(bytes);
    file.close();
}

/// False where the folder does not take the new file. The replacement keeps what belongs to the old name: its owner,
/// its rights, its attributes.
bool replace_in_one_step(const std::string& library, std::span<const std::uint8_t> bytes)
{
    const std::string fresh = name_beside(library);
    const std::wstring wide = wide_path(fresh);
    try {
        write_whole(fresh, bytes);
    } catch (const file_error&) {
        ::DeleteFileW(wide.c_str());
        return false;
    }
    if (::ReplaceFileW(wide_path(library).c_str(), wide.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                       nullptr) != 0) {
        return true;
    }
    ::DeleteFileW(wide.c_str());
    return false;
}

}  // namespace

void save_library(const std::string& path, std::string_view content)
{
    // Whoever may not write the file may not replace it either.
    if (!may_be_written(path)) throw file_error{{.file = path, .found = "permission denied"}};
    const std::span bytes{reinterpret_cast<const std::uint8_t*>(content.data()), content.size()};
    if (!replace_in_one_step(path, bytes)) write_whole(path, bytes);
}

}  // namespace tamrix
