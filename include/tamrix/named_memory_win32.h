// The part of tamrix/named_memory.h for Windows; include that one. Names go to the system as 8-bit text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tamrix::named_memory {

/// A HANDLE of the system as a number.
using handle = std::uintptr_t;

void close(handle file, const std::string& object) noexcept;
handle open(const std::string& object);
handle create(const std::string& object, std::uint32_t length_bytes);
handle open_or_create(const std::string& object, std::uint32_t length_bytes);
std::size_t reach_bytes(handle file);
void* map(handle file);
bool unmap(void* address, std::size_t length_bytes) noexcept;

}  // namespace tamrix::named_memory
