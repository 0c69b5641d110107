// The words of a device note: heading and rows, lined up as far as a proportional font allows.
#pragma once

#include "device/note_table.h"

#include <functional>
#include <string>

namespace tamrix::notes {

/// `text` yields a message by its number.
std::string note_text(const note& which, const device_values& device, const std::function<std::string(int)>& text);

}  // namespace tamrix::notes
