// Tektronix hexadecimal: "/" address count header-check data data-check.
#pragma once

#include "formats/formats.h"

namespace tamrix {

detection detect_tektronix(const file_start& file);
std::optional<address_range> measure_tektronix(const std::string& path);
status read_tektronix(transfer_job& job);
status write_tektronix(transfer_job& job);

}  // namespace tamrix
