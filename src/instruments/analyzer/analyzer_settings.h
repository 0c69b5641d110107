// What outlives the analyzer's dialog.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace tamrix {

struct analyzer_settings {
    std::int16_t trigmode = 0;   // 0: a record begins at once; -1: with the level of the trigger pin
    std::int16_t triglevel = 0;  // -1: high; 0: low
    std::uint8_t trigpin = 0;    // 0 is P21, 7 is P28
    double sampleus = 0;         // microseconds from one sample to the next, as they are shown
    /// Called as a person notices things, with a line each: "status1 TEXT", "clear", "labels", "draw", "enabled
    /// Command3 0", "timer2 8000", "timer2 off", "box TITLE | TEXT". May be empty.
    std::function<void(const std::string&)> on_event;
};

}  // namespace tamrix
