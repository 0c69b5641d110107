// The registers of the function boards: all zeros and all ones are written and read back.
#pragma once

#include "selftest/model_plan.h"
#include "selftest/pin_access.h"

namespace tamrix {

/// The register test of models below 40: asks after each board with a fault.
stage_end test3030(socket_frame& form, const selftest_model& model);

}  // namespace tamrix
