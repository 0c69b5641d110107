// What outlives the dialog of frequency meter and signal generator.
#pragma once

#include "tamrix/types.h"

#include <functional>
#include <string>

namespace tamrix {

struct wave_variables {
    bool16 fwave = bool16_false;  // not 0: the frequency meter; 0: the signal generator
    /// Called as a person notices things, with a line each: "text1 TEXT", "enabled bigan 0", "timer1 800", "timer1
    /// off". May be empty.
    std::function<void(const std::string&)> on_event;
};

}  // namespace tamrix
