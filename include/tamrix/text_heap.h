// The heap of numbered texts that host and plug-in share in one process. A text block holds one such number an element.
#pragma once

#include "tamrix/clstamrix.h"

#include <cstddef>
#include <cstdint>

extern "C" {

/// Stores `length_bytes` bytes of UTF-8 and yields their handle, never 0. Handle 0 stands for the empty text. Yields 0
/// where memory is short.
TAMRIX_EXPORT std::uint32_t tamrix_text_new(const char* text, std::size_t length_bytes) noexcept;
/// The text of a handle, ended by a NUL that is not counted in `length_bytes` (which may be null). An unknown handle
/// and 0 give "". Valid until the handle is freed.
TAMRIX_EXPORT const char* tamrix_text_get(std::uint32_t handle, std::size_t* length_bytes) noexcept;
/// Frees a handle. 0 and unknown handles are ignored.
TAMRIX_EXPORT void tamrix_text_free(std::uint32_t handle) noexcept;
/// How many handles are in use.
TAMRIX_EXPORT std::size_t tamrix_text_count() noexcept;
}

namespace tamrix {

/// The four functions as a host that loaded the library at run time holds them.
struct text_heap_functions {
    decltype(&tamrix_text_new) make = nullptr;
    decltype(&tamrix_text_get) get = nullptr;
    decltype(&tamrix_text_free) free = nullptr;
};

}  // namespace tamrix
