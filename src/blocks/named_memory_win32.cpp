#include "tamrix/named_memory.h"

#include <windows.h>

namespace tamrix::named_memory {

namespace {

HANDLE system_handle(handle file) { return reinterpret_cast<HANDLE>(file); }

handle number_of(HANDLE file) { return reinterpret_cast<handle>(file); }

/// If the name is taken, returns the existing object; the system then reports ERROR_ALREADY_EXISTS.
handle make(const std::string& object, std::uint32_t length_bytes)
{
    ::SetLastError(ERROR_SUCCESS);
    return number_of(
        ::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, length_bytes, object.c_str()));
}

}  // namespace

void close(handle file, const std::string&) noexcept
{
    if (file != 0) ::CloseHandle(system_handle(file));
}

handle open(const std::string& object)
{
    return number_of(::OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, object.c_str()));
}

handle create(const std::string& object, std::uint32_t length_bytes)
{
    const handle file = make(object, length_bytes);
    if (file == 0 || ::GetLastError() != ERROR_ALREADY_EXISTS) return file;
    close(file, object);
    return 0;
}

handle open_or_create(const std::string& object, std::uint32_t length_bytes)
{
    const handle file = open(object);
    return file != 0 || length_bytes == 0 ? file : make(object, length_bytes);
}

std::size_t reach_bytes(handle file)
{
    if (file == 0) return 0;
    void* const address = map(file);
    MEMORY_BASIC_INFORMATION region{};
    const bool known = address != nullptr && ::VirtualQuery(address, &region, sizeof region) != 0;
    unmap(address, 0);
    return known ? region.RegionSize : 0;
}

void* map(handle file)
{
    return file == 0 ? nullptr : ::MapViewOfFile(system_handle(file), FILE_MAP_ALL_ACCESS, 0, 0, 0);
}

bool unmap(void* address, std::size_t) noexcept { return address != nullptr && ::UnmapViewOfFile(address) != 0; }

}  // namespace tamrix::named_memory
