// Holtek images: a header, and two segments that each carry an address, data and a checksum.
#pragma once

#include "formats/formats.h"

namespace tamrix {

detection detect_holtek(const file_start& file);
std::optional<address_range> measure_holtek(const std::string& path);
status read_holtek(transfer_job& job);

}  // namespace tamrix
