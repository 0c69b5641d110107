// The driver switches that a self-test finds on each model.
#pragma once

#include "sim/faults.h"

namespace tamrix::sim {

/// True if control address `pin` + 128 switches the VPP, VCC or ground driver of this pin; `pin` counts from 1 as on a
/// socket of 48. False for a pin whose driver is not known.
bool has_test_switch(int model, driver_kind kind, int pin);

}  // namespace tamrix::sim
