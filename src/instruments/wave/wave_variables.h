// What the wave dialog goes by.
#pragma once

#include "tamrix/types.h"

namespace tamrix {

struct wave_variables {
    bool16 fwave = bool16_false;
};

}  // namespace tamrix
