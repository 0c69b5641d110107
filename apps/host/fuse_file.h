// Fuse files in the form of their standard, from a buffer.
#pragma once

#include "host/device_preset.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tamrix::host {

/// The fuses of a device, 0 or 1, from the start of a buffer of characters "0" and "1". Throws std::runtime_error if a
/// character is none of them or the buffer is smaller than the device.
std::vector<std::uint8_t> fuses_in(std::span<const std::uint8_t> buffer, const device_preset& device);

/// Replaces `path`. `plug_in_file` is a file that the plug-in saved: the vectors come from it. Throws
/// std::runtime_error if a vector is not one of the standard or a file cannot be read or written; `path` is as it was
/// then.
void save_standard_fuse_file(const std::string& path, std::vector<std::uint8_t> fuses, const device_preset& device,
                             const std::string& plug_in_file);

}  // namespace tamrix::host
