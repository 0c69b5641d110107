// Whether all pins of the empty socket read the level to which their inputs are pulled.
#pragma once

#include "selftest/pin_access.h"

namespace tamrix {

/// `level` is 0 or 1. Paints what reads otherwise, and asks once where anything does.
stage_end test_inputs(socket_frame& form, const pin_access& access, int level);

}  // namespace tamrix
