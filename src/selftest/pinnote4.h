// The self-test of the programmers with a 40-pin socket that is wired in an order of its own.
#pragma once

#include "selftest/small_socket_frame.h"

namespace tamrix {

class pinnote4 final : public small_socket_frame {
public:
    pinnote4(session& plug_in, selftest_variables& variables);
    /// With these drivers instead of the model's.
    pinnote4(session& plug_in, selftest_variables& variables, const selftest_model& tested);

    /// These programmers are reached by USB only.
    bool by_usb() const override { return true; }

private:
    using stage = stage_end (pinnote4::*)();

    stage_end system_test() override;
    stage_end output_test() override;

    stage_end test_ram();
    stage_end drive_all_high();
    void say_drivers_untested();
};

}  // namespace tamrix
