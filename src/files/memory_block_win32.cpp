#include "files/memory_block.h"

#include <limits>
#include <new>

#include <windows.h>

namespace tamrix {

memory_block::memory_block(std::uint64_t bytes)
{
    if (bytes > std::numeric_limits<std::size_t>::max() / 2) throw std::bad_alloc{};
    mapped_ = static_cast<std::size_t>(bytes);
    void* const memory = ::VirtualAlloc(nullptr, mapped_, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (memory == nullptr) throw std::bad_alloc{};
    bytes_ = static_cast<std::uint8_t*>(memory);
}

memory_block::~memory_block()
{
    if (bytes_ != nullptr) ::VirtualFree(bytes_, 0, MEM_RELEASE);
}

}  // namespace tamrix
