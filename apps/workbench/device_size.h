// How large a device is, in words that people use.
#pragma once

#include "host/device_preset.h"

#include <cstdint>
#include <string>

namespace tamrix::workbench {

/// "32 KiB", "8 MiB", "1234 bytes", "1 byte".
std::string size_text(std::int64_t bytes);
/// Whether the words of the device are fuses: its algorithm is GAL.
bool has_fuses(const host::device_preset& device);
/// "2194 fuses" of a logic device, else the size of what the device has in the buffer.
std::string size_text(const host::device_preset& device);
/// What the log says of the buffer of a device: "2194 fuses", "buffer of 32 KiB".
std::string buffer_text(const host::device_preset& device);

}  // namespace tamrix::workbench
