// JEDEC fuse files: one character "0" or "1" of the shared buffer a fuse, and the device's test vectors.
#pragma once

#include "base/diagnostic.h"
#include "pld/pld_variables.h"

#include <string>

namespace tamrix {

class session;

/// Reads the fuse file `fname` into the buffer and the vector list. What was read before a fault stays; the fault is
/// left in `why_it_failed`.
void read_jedec(session& plug_in, pld_variables& pld, diagnostic& why_it_failed, const std::string& fname);

/// Writes the buffer's fuses and the vector list. What was written before a fault stays in the file; the fault is left
/// in `why_it_failed`.
void write_jedec(session& plug_in, pld_variables& pld, diagnostic& why_it_failed, const std::string& fname);

}  // namespace tamrix
