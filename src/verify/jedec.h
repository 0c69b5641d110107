// JEDEC fuse files by the rules of their standard, JESD3-C.
#pragma once

#include "verify/fuse_map.h"
#include "verify/verification.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tamrix {

/// Its `header` is that of `map`, its segments are empty.
struct jedec_reading : verification {
    fuse_map map{};                                      // a fuse that the file does not give is 0
    std::optional<std::uint64_t> stated_count{};         // of fuses, from QF
    std::uint64_t in_rows = 0;                           // fuses that rows give
    std::uint64_t missing = 0;                           // fuses that neither a row nor a default gives
    bool has_default = false;                            // F
    std::uint16_t fuse_sum = 0, transmission_sum = 0;    // as they should be
    std::optional<std::uint16_t> stated_fuse_sum{};      // C
    std::optional<std::uint16_t> stated_transmission{};  // 0: not computed
};

/// Reads `from` to its end. `name` is the file's in the remarks. A file without a fuse count has as many fuses as its
/// rows. Throws file_error where the source cannot be read.
jedec_reading verify_jedec(byte_source& from, const std::string& name);

}  // namespace tamrix
