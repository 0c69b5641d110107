// The self-test of the programmers with a 48-pin socket.
#pragma once

#include "selftest/model_plan.h"
#include "selftest/pin_access.h"
#include "selftest/socket_frame.h"

namespace tamrix {

/// The options of a model.
selftest_plan pinnote_plan(const selftest_model& model);

class pinnote final : public socket_frame {
public:
    pinnote(session& plug_in, selftest_variables& variables);

private:
    using stage = stage_end (pinnote::*)();

    stage_end system_test() override;
    stage_end output_test() override;

    stage_end start();
    stage_end test_ram();
    stage_end test_pins();
    stage_end test_vpp();
    stage_end test_vcc();
    stage_end reset();
    stage_end test_ground();
    stage_end test_registers();
    stage_end without_drivers(selftest_stage skipped);

    selftest_model tested_;
    pin_access access_;
};

}  // namespace tamrix
