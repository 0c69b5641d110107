// Motorola S-records: "S" type count address data checksum.
#pragma once

#include "formats/formats.h"

namespace tamrix {

detection detect_motorola(const file_start& file);
std::optional<address_range> measure_motorola(const std::string& path);
std::optional<address_range> estimate_motorola(const std::string& path);
status read_motorola(transfer_job& job);
status write_motorola(transfer_job& job);

}  // namespace tamrix
