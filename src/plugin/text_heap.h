// The process's heap of numbered texts as the plug-in's own code uses it; hosts use tamrix/text_heap.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix::text_heap {

/// Stores a text and yields its handle; the empty text is handle 0. Throws std::bad_alloc.
std::uint32_t make(std::string_view text);
/// The text of a handle; "" for 0 and for an unknown one.
std::string get(std::uint32_t handle);
void free(std::uint32_t handle) noexcept;
std::size_t count() noexcept;

}  // namespace tamrix::text_heap
