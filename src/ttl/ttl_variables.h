// The logic IC in work, and what the logic tests go by; shared by the library, the vector runs and the dialogs.
#pragma once

#include "pld/vector_list.h"
#include "tamrix/types.h"
#include "ttl/run_outcome.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix {

struct ttl_variables {
    std::string ttlname;
    std::int16_t ttlpin = 0;
    std::int16_t ttlcnt = 0;           // rows plus one
    vector_list ttlvect;               // row 0 in entry 0
    std::string ttlmap;                // the last row as it was wired to a socket of 40 positions
    std::vector<std::string> hits;     // the devices that the last auto find found
    run_outcome outcome;               // of the last logic test, auto find or vector test
    std::vector<finished_test> tests;  // those of the last call of the host, in order
    std::string proposed;              // with what the search for a device to test begins, if it is listed
    std::uint8_t ttleditlib = 0;       // 1: the test dialog edits the library, else it tests
    std::uint8_t wnote = 0;  // whose vectors: 0 those of a logic IC; 1 those of the host's device, which its data power
    bool16 ok = bool16_false;  // the host has found the programmer
    std::uint8_t icsum = 0;    // stored for the host, read by nothing here
};

}  // namespace tamrix
