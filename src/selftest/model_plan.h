// What a model takes part in, as far as the self-test asks. With channel/model.h the only place that compares model
// numbers.
#pragma once

#include "channel/model.h"

namespace tamrix {

struct selftest_model {
    std::int16_t number = 0;
    bool single_vpp = false;  // calibrates one VPP generator, at other pins and voltages
};

/// Whatever the number is.
constexpr selftest_model selftest_model_of(std::int16_t number)
{
    selftest_model made{.number = number};
    made.single_vpp = number == 15 || number == 16 || number == 57 || number == 58;
    return made;
}

}  // namespace tamrix
