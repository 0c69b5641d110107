// A shared block by the system's calls alone.
#pragma once

#include <string>

#include <windows.h>

namespace tamrix::tests {

/// A block as the host holds it open.
class host_block {
public:
    host_block(const std::string& name, DWORD bytes)
        : mapping_{::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, bytes, name.c_str())},
          view_{::MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, 0)}
    {}
    ~host_block()
    {
        ::UnmapViewOfFile(view_);
        ::CloseHandle(mapping_);
    }
    host_block(const host_block&) = delete;
    host_block& operator=(const host_block&) = delete;

    template <class T>
    T* as() const
    {
        return static_cast<T*>(view_);
    }

private:
    HANDLE mapping_;
    void* view_;
};

}  // namespace tamrix::tests
