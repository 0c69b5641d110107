// One device of the library, fetched and played.
#pragma once

#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>

namespace tamrix {

class session;

/// Fetches a device into `ttlpin`, `ttlcnt` and `ttlvect` and, unless `loadonly` is -1, plays its vectors.
run_outcome ttlload(session& plug_in, ttl_variables& ttl, const std::string& name, std::int16_t stopfirst,
                    std::int16_t loadonly);

}  // namespace tamrix
