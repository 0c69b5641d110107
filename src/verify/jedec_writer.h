// Writes JEDEC fuse files in the form of their standard, JESD3-C, which any programmer reads.
#pragma once

#include "verify/fuse_map.h"

#include <cstdint>
#include <string>

namespace tamrix {

/// The whole file: header, counts, default, rows of `row_fuses` fuses (1 or more), vectors, both checksums. Lines end
/// with CR LF. Texts of the map are written as they are; a header without text is replaced.
std::string jedec_file(const fuse_map& map, std::uint32_t row_fuses);

}  // namespace tamrix
