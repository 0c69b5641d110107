// EMC images (.CDS): a word count, then the data.
#pragma once

#include "formats/formats.h"

namespace tamrix {

detection detect_emc(const file_start& file);
std::optional<address_range> measure_emc(const std::string& path);
status read_emc(transfer_job& job);

}  // namespace tamrix
