// The words of a device note: heading and rows, lined up as far as a proportional font allows.
#pragma once

#include "device/note_table.h"
#include "forms/box_table.h"

#include <functional>
#include <string>

namespace tamrix::notes {

/// `text` yields a message by its number.
forms::box_table words_of(const note& which, const device_values& device, const std::function<std::string(int)>& text);

}  // namespace tamrix::notes
