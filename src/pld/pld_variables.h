// The test vectors of a programmable device and what else a fuse file brings; shared by reader, writer and
// vector test.
#pragma once

#include "pld/vector_list.h"

#include <cstdint>
#include <string>

namespace tamrix {

struct pld_variables {
    vector_list pldvect;
    std::int32_t pldvectcnt = 0;  // the highest vector number plus 1
    std::uint32_t checksum = 0;   // of the fuses read or written last
    std::string note;             // header text of the fuse file read last: each line after a line feed and two blanks
};

}  // namespace tamrix
