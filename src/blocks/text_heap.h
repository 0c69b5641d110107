// The host's heap of texts as the plug-in's own code uses it. On Windows it is the system's, elsewhere the process's
// heap of numbered texts in tamrix/text_heap.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix::text_heap {

/// Stores a text, UTF-8, and returns its handle; the empty text is handle 0. Throws std::bad_alloc.
std::uint32_t make(std::string_view text);
/// The text of a handle; "" for 0 and for an unknown one.
std::string get(std::uint32_t handle);
void free(std::uint32_t handle) noexcept;

}  // namespace tamrix::text_heap
