// The self-test of the programmer with a 40-pin socket and VCC alone to calibrate.
#pragma once

#include "selftest/small_socket_frame.h"

namespace tamrix {

class pinnote_sepm final : public small_socket_frame {
public:
    pinnote_sepm(session& plug_in, selftest_variables& variables);
    /// With these drivers instead of the model's.
    pinnote_sepm(session& plug_in, selftest_variables& variables, const selftest_model& tested);

private:
    using stage = stage_end (pinnote_sepm::*)();

    stage_end system_test() override;
    stage_end output_test() override;

    stage_end test_ram();
    stage_end test_registers();
};

}  // namespace tamrix
