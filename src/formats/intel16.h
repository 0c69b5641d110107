// Intel Hex16: Intel HEX whose addresses and lengths count 16-bit words.
#pragma once

#include "formats/formats.h"

namespace tamrix {

detection detect_intel16(const file_start& file);
std::optional<address_range> measure_intel16(const std::string& path);
status read_intel16(transfer_job& job);

}  // namespace tamrix
