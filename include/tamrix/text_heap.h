// The heap of numbered texts that host and plug-in share in one process. Each element of a text block is such a number.
#pragma once

#include "tamrix/clstamrix.h"

#include <cstddef>
#include <cstdint>

extern "C" {

/// Stores `length_bytes` bytes of UTF-8 and returns their handle; 0 if memory is short. Handle 0 is the empty text.
TAMRIX_EXPORT std::uint32_t tamrix_text_new(const char* text, std::size_t length_bytes) noexcept;
/// The text of a handle, with a NUL at the end that `length_bytes` (which may be null) does not count. For 0 and
/// unknown handles "". Valid until the handle is freed.
TAMRIX_EXPORT const char* tamrix_text_get(std::uint32_t handle, std::size_t* length_bytes) noexcept;
/// Frees a handle. 0 and unknown handles are ignored.
TAMRIX_EXPORT void tamrix_text_free(std::uint32_t handle) noexcept;
/// How many handles are in use.
TAMRIX_EXPORT std::size_t tamrix_text_count() noexcept;
}

namespace tamrix {

/// The four functions, for a host that loads the library at run time.
struct text_heap_functions {
    decltype(&tamrix_text_new) make = nullptr;
    decltype(&tamrix_text_get) get = nullptr;
    decltype(&tamrix_text_free) free = nullptr;
};

}  // namespace tamrix
