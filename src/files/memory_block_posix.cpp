#include "files/memory_block.h"

#include <limits>
#include <new>

#include <sys/mman.h>

namespace tamrix {

memory_block::memory_block(std::uint64_t bytes)
{
    constexpr std::size_t huge_page = std::size_t{2} << 20;
    if (bytes > std::numeric_limits<std::size_t>::max() / 2) throw std::bad_alloc{};
    const bool large = bytes >= huge_page;
    const auto wanted = static_cast<std::size_t>(bytes);
    mapped_ = large ? (wanted + huge_page - 1) / huge_page * huge_page : wanted;
    void* const memory = ::mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc{};
    bytes_ = static_cast<std::uint8_t*>(memory);
    if (large) ::madvise(memory, mapped_, MADV_HUGEPAGE);
}

memory_block::~memory_block()
{
    if (bytes_ != nullptr) ::munmap(bytes_, mapped_);
}

}  // namespace tamrix
