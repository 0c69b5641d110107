#include "selftest/small_socket_frame.h"

#include "messages/message_numbers.h"
#include "selftest/pin_read.h"
#include "selftest/port_reset.h"
#include "selftest/ram_test.h"
#include "session/session.h"

namespace tamrix {

small_socket_frame::small_socket_frame(session& plug_in, selftest_variables& variables, const selftest_model& tested,
                                       const small_socket_plan& plan)
    : socket_frame{plug_in, variables, plan.options, lamps::socket_of_40},
      tested_{tested},
      access_{.lamp_of_line = plan.lamp_of_line},
      timing_{plan.timing}
{}

stage_end small_socket_frame::start()
{
    clearpins();
    if (const stage_end end = reset_programmer(); end != stage_end::passed) return end;
    device().boardsel(3);
    device().delayms(100);
    return stage_end::passed;
}

/// Bad RAM does not make the run fail.
stage_end small_socket_frame::test_ram(int (*count_good_blocks)(selftest_frame&), std::int32_t block_bytes)
{
    announce(message::test, " RAM ");
    const int good = count_good_blocks(*this);
    keep_ram_level(*this, good, block_bytes);
    status(" RAM level= " + std::to_string(good));
    device().delayms(5000);
    return stage_end::passed;
}

stage_end small_socket_frame::announce_input()
{
    status(plug_in().text(message::input_test));
    return stage_end::passed;
}

stage_end small_socket_frame::test_pins()
{
    if (const stage_end end = test_inputs(*this, access_, 1); end != stage_end::passed) return end;
    device().boardsel(7);
    if (const stage_end end = test_inputs(*this, access_, 0); end != stage_end::passed) return end;
    device().regout(1, level_switch);
    return stage_end::passed;
}

stage_end small_socket_frame::test_vpp()
{
    announce(message::output_test, " VPP ");
    return test_drivers(*this, access_, vpp_drivers, tested_.vpp, on_fault::ask, timing_);
}

stage_end small_socket_frame::test_vcc()
{
    announce(message::output_test, " VCC ");
    return test_drivers(*this, access_, vcc_drivers, tested_.vcc, on_fault::ask, timing_);
}

stage_end small_socket_frame::reset() { return reset_ports(*this, access_); }

/// Intentional: what this stage finds is neither shown nor asked about, and does not make the run fail.
stage_end small_socket_frame::test_ground()
{
    announce(message::output_test, " GND ");
    return test_drivers(*this, access_, ground_drivers, tested_.ground, on_fault::keep_quiet, timing_);
}

}  // namespace tamrix
