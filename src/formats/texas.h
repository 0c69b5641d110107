// Texas Instrument text: "@" and an address, lines of bytes with blanks between, "q" at the end.
#pragma once

#include "formats/formats.h"

namespace tamrix {

detection detect_texas(const file_start& file);
std::optional<address_range> measure_texas(const std::string& path);
status read_texas(transfer_job& job);

}  // namespace tamrix
