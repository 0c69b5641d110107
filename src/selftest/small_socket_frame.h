// The self-test dialogs with a 40-pin socket: the stages that they have in common.
#pragma once

#include "selftest/driver_test.h"
#include "selftest/model_plan.h"
#include "selftest/pin_access.h"
#include "selftest/socket_frame.h"

namespace tamrix {

/// What differs between these dialogs, apart from the order of their stages.
struct small_socket_plan {
    selftest_plan options;
    std::span<const std::uint8_t> lamp_of_line{};  // as in pin_access
    driver_timing timing{};
};

class small_socket_frame : public socket_frame {
public:
    /// `tested` says which pins have which drivers.
    small_socket_frame(session& plug_in, selftest_variables& variables, const selftest_model& tested,
                       const small_socket_plan& plan);

protected:
    // Stages.
    stage_end start();
    stage_end announce_input();
    stage_end test_pins();
    stage_end test_vpp();
    stage_end test_vcc();
    stage_end reset();
    stage_end test_ground();

    stage_end test_ram(int (*count_good_blocks)(selftest_frame&), std::int32_t block_bytes);

    const selftest_model& tested() const { return tested_; }
    const pin_access& access() const { return access_; }

private:
    selftest_model tested_;
    pin_access access_;
    driver_timing timing_;
};

}  // namespace tamrix
