// Intel HEX: ":" count address type data checksum.
#pragma once

#include "formats/formats.h"

namespace tamrix {

detection detect_intel(const file_start& file);
std::optional<address_range> measure_intel(const std::string& path);
std::optional<address_range> estimate_intel(const std::string& path);
status read_intel(transfer_job& job);
status write_intel(transfer_job& job);

}  // namespace tamrix
