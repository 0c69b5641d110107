// Device presets as people read and edit them: a text file of stanzas, one a device.
#pragma once

#include "host/device_preset.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::host {

// device 24C256          starts a stanza; the rest of the line is the name
//     maker Microchip
//     words 0x8000       numbers are decimal, or hexadecimal after "0x"
//     vcc 5.00           volts
//     clear ff           ff, 00 or none
// "#" starts a comment. What a stanza leaves out has its default; the default buffer fits the device.

/// The devices of a text; `file` is its name in errors. Throws std::runtime_error:
/// "devices.txt:12: word-bytes 300 where a number from 1 to 255 was expected".
std::vector<device_preset> parse_presets(std::string_view text, const std::string& file);
/// The text that parse_presets reads back to the same devices.
std::string print_presets(std::span<const device_preset> devices);

/// Reads a file of devices. Throws std::runtime_error as parse_presets, or with the reason why it cannot be read.
std::vector<device_preset> read_presets(const std::string& path);
/// Writes a file of devices, which at every moment holds the old or the new ones. Throws std::runtime_error.
void write_presets(const std::string& path, std::span<const device_preset> devices);

}  // namespace tamrix::host
