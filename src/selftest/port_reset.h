// Takes the ports back to normal pin work between the stages of a System Test.
#pragma once

#include "selftest/pin_access.h"

namespace tamrix {

/// By USB the ports are driven high twice and released then, with a wait after each; by registers nothing is driven.
stage_end reset_ports(socket_frame& form, const pin_access& access);

}  // namespace tamrix
