// SVF files by the grammar of the format, revision E.
#pragma once

#include "verify/verification.h"

#include <cstdint>
#include <string>

namespace tamrix {

/// Its segments are empty.
struct svf_reading : verification {
    std::uint64_t statements = 0;
    std::uint64_t bits_shifted = 0;  // by SIR and SDR, with the headers and trailers around them
};

/// Reads `from` to its end. `name` is the file's in the remarks. Throws file_error where the source cannot be read.
svf_reading verify_svf(byte_source& from, const std::string& name);

}  // namespace tamrix
