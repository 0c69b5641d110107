// Short questions about the bytes: a value to fill with, an address to go to. A wrong answer is explained in the
// dialog, which stays until the answer is right or the person gives up.
#pragma once

#include "editing/byte_range.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>

#include <wx/window.h>

namespace tamrix::workbench {

struct fill_choice {
    std::uint8_t value = 0xFF;
    bool selection = false;  // or the whole buffer
};

/// `selected` is empty where there is no selection. None where the person cancels.
std::optional<fill_choice> ask_for_fill(wxWindow* parent, editing::byte_range selected, std::uint8_t before);

/// An address in a buffer of `bytes` bytes, typed or one of the marks. None where the person cancels.
std::optional<std::size_t> ask_for_address(wxWindow* parent, std::size_t here, std::size_t bytes,
                                           const std::set<std::size_t>& marks);

}  // namespace tamrix::workbench
