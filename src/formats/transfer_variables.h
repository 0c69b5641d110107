// What a load or save works with, and what it leaves for later.
#pragma once

#include "base/diagnostic.h"
#include "tamrix/types.h"

#include <cstdint>
#include <string>

namespace tamrix {

/// Where a load starts and which bytes it takes; set by the load and save dialogs, read by all readers and writers.
/// Addresses and lengths are in bytes.
struct transfer_variables {
    std::int64_t bufstart = 0;    // buffer address at which the load or save starts
    std::int64_t filestart = 0;   // file address from which the load starts
    std::int64_t loadlength = 0;  // upper limit of bytes to load
    std::int64_t savelength = 0;  // bytes to save; writers change it for their own progress count
    std::int16_t tomode = 0;      // index of the To Buffer Mode
    std::int16_t filestep = 1;    // every filestep-th file byte is taken ...
    std::int16_t filephase = 0;   // ... beginning at filephase
    std::int16_t bufstep = 1;     // it goes to every bufstep-th buffer byte ...
    std::int32_t bufphase = 0;    // ... beginning at bufphase
    std::string fname{};
    std::int16_t rformat = 0;    // format option to preselect; after a load or save its status
    variant frommode{};          // index of the From File Mode; empty until a load has run
    diagnostic why_it_failed{};  // of the last load or save, fuse files and SVF included; empty after a success
};

}  // namespace tamrix
