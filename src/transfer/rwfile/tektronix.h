// Tektronix hexadecimal: "/" address count header-check data data-check.
#pragma once

#include "transfer/formats.h"

namespace tamrix {

status write_tektronix(transfer_job& job);

}  // namespace tamrix
