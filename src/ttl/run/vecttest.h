// The test vectors of a programmable device, played on the device in the socket.
#pragma once

#include "pld/pld_variables.h"
#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix {

class session;

/// Mode 0 takes `editor_rows` and reports in boxes; every other mode takes `pldvect` and reports in MainRtstr(0).
/// Without hardware nothing is done.
void vecttest(session& plug_in, ttl_variables& ttl, const pld_variables& pld, std::uint8_t mode,
              const std::vector<std::string>& editor_rows);

}  // namespace tamrix
