// Motorola S-records: "S" type count address data checksum.
#pragma once

#include "transfer/formats.h"

namespace tamrix {

status write_motorola(transfer_job& job);

}  // namespace tamrix
