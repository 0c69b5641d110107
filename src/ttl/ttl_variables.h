// The logic IC in work, shared by the library, the vector runs and the vector editor.
#pragma once

#include "pld/vector_list.h"
#include "ttl/run_outcome.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix {

struct ttl_variables {
    std::string ttlname;
    std::int16_t ttlpin = 0;
    std::int16_t ttlcnt = 0;        // rows plus one
    vector_list ttlvect;            // row 0 in entry 0
    std::string ttlmap;             // the last row as it was wired to a socket of 40 positions
    std::vector<std::string> hits;  // the devices that the last auto find found
    run_outcome outcome;            // of the last logic test, auto find or vector test
};

}  // namespace tamrix
