#include "selftest/pinnote.h"

#include "messages/message_numbers.h"
#include "selftest/driver_test.h"
#include "selftest/output_test.h"
#include "selftest/pin_read.h"
#include "selftest/port_reset.h"
#include "selftest/ram_test.h"
#include "selftest/register_test.h"
#include "session/session.h"

namespace tamrix {

namespace {

using enum option_action;
using enum generator;

constexpr option_plan two_generators[] = {
    {.does = option_action::system_test, .message = message::system_test},
    {.does = calibration,
     .before = "VCC",
     .message = message::voltage_calibration,
     .after = "(3V)",
     .calibration = {.supply = vcc, .millivolts = 3000, .driver = 2, .lamp = 22, .ink = lamps::red},
     .adaptor_note = true},
    {.does = calibration,
     .before = "VPP0",
     .message = message::voltage_calibration,
     .after = "(12V)",
     .calibration = {.supply = vpp0, .millivolts = 12000, .driver = 2, .lamp = 22, .ink = lamps::cyan}},
    {.does = calibration,
     .before = "VPP1",
     .message = message::voltage_calibration,
     .after = "(12V)",
     .calibration = {.supply = vpp1, .millivolts = 12000, .driver = 3, .lamp = 21, .ink = lamps::cyan}},
    {.does = calibration,
     .before = "VPP0",
     .message = message::voltage_calibration,
     .after = "(25V)",
     .calibration = {.supply = vpp0, .millivolts = 25000, .driver = 2, .lamp = 22, .ink = lamps::green},
     .adaptor_note = true},
    {.does = calibration,
     .before = "VPP1",
     .message = message::voltage_calibration,
     .after = "(25V)",
     .calibration = {.supply = vpp1, .millivolts = 25000, .driver = 3, .lamp = 21, .ink = lamps::green},
     .adaptor_note = true},
    {.does = option_action::output_test, .message = message::output_test},
};

constexpr option_plan one_generator[] = {
    {.does = option_action::system_test, .message = message::system_test},
    {.does = calibration,
     .before = "VCC",
     .message = message::voltage_calibration,
     .after = "(5V)",
     .calibration = {.supply = vcc, .millivolts = 5000, .driver = 4, .lamp = 20, .ink = lamps::red}},
    {.does = calibration,
     .before = "VPP",
     .message = message::voltage_calibration,
     .after = "(12V)",
     .calibration = {.supply = vpp0, .millivolts = 12000, .driver = 6, .lamp = 18, .ink = lamps::cyan}},
    {.does = calibration,
     .before = "VPP1",
     .message = message::voltage_calibration,
     .after = "(12V)",
     .calibration = {.supply = vpp1, .millivolts = 12000, .driver = 3, .lamp = 21, .ink = lamps::cyan},
     .offered = false},
    {.does = calibration,
     .before = "VPP",
     .message = message::voltage_calibration,
     .after = "(21V)",
     .calibration = {.supply = vpp0, .millivolts = 21000, .driver = 6, .lamp = 18, .ink = lamps::green}},
    {.does = calibration,
     .before = "VPP1",
     .message = message::voltage_calibration,
     .after = "(21V)",
     .calibration = {.supply = vpp1, .millivolts = 21000, .driver = 3, .lamp = 21, .ink = lamps::green},
     .offered = false},
    {.does = option_action::output_test, .message = message::output_test},
};

}  // namespace

selftest_plan pinnote_plan(const selftest_model& model)
{
    return model.single_vpp ? selftest_plan{one_generator} : selftest_plan{two_generators};
}

pinnote::pinnote(session& plug_in, selftest_variables& variables)
    : socket_frame{plug_in, variables, pinnote_plan(selftest_model_of(plug_in.blocks.modeltype(0))),
                   lamps::socket_of_48},
      tested_{selftest_model_of(plug_in.blocks.modeltype(0))}
{}

stage_end pinnote::system_test()
{
    static constexpr stage stages[] = {
        &pinnote::start,    &pinnote::test_ram, &pinnote::test_pins,   &pinnote::test_vpp,
        &pinnote::test_vcc, &pinnote::reset,    &pinnote::test_ground, &pinnote::test_registers,
    };
    return in_order(*this, std::span<const stage>{stages});
}

stage_end pinnote::output_test()
{
    return tested_.whole_side_output ? test_outputs_of_whole_sides(*this, access_)
                                     : test_outputs_in_two_parts(*this, access_);
}

stage_end pinnote::start()
{
    clearpins();
    if (const stage_end end = reset_programmer(); end != stage_end::passed) return end;
    select_common_board();
    device().delayms(100);
    return stage_end::passed;
}

/// Bad RAM does not make the run fail.
stage_end pinnote::test_ram()
{
    announce(message::test, " RAM ");
    const int good = tested_.large_ram ? test_large_ram(*this) : test_small_ram(*this);
    keep_ram_level(*this, good, ram_block_bytes);
    status(" RAM level= " + std::to_string(good));
    device().delayms(5000);
    return stage_end::passed;
}

stage_end pinnote::test_pins()
{
    status(plug_in().text(message::input_test));
    if (!generation_17()) add(untested_pins{selftest_stage::input, unread_pins, not_read_by_generation});
    if (const stage_end end = test_inputs(*this, access_, 1); end != stage_end::passed) return end;
    if (model().selects_two_boards) {
        device().boardsel2(7, 3);
    } else {
        device().boardsel(7);
    }
    if (const stage_end end = test_inputs(*this, access_, 0); end != stage_end::passed) return end;
    device().regout(1, level_switch);
    return stage_end::passed;
}

stage_end pinnote::test_vpp()
{
    if (!tested_.vpp.takes_part()) return without_drivers(selftest_stage::vpp);
    announce(message::output_test, " VPP ");
    return test_drivers(*this, access_, vpp_drivers, tested_.vpp, on_fault::ask);
}

stage_end pinnote::test_vcc()
{
    if (!tested_.vcc.takes_part()) return without_drivers(selftest_stage::vcc);
    announce(message::output_test, " VCC ");
    return test_drivers(*this, access_, vcc_drivers, tested_.vcc, on_fault::ask);
}

stage_end pinnote::reset() { return reset_ports(*this, access_); }

/// Intentional: what this stage finds is neither shown nor asked about, and does not make the run fail.
stage_end pinnote::test_ground()
{
    if (!tested_.ground.takes_part()) return without_drivers(selftest_stage::ground);
    announce(message::output_test, " GND ");
    return test_drivers(*this, access_, ground_drivers, tested_.ground, on_fault::keep_quiet);
}

stage_end pinnote::test_registers()
{
    announce(message::test, " IC ");
    if (tested_.boards_of_gates) return test3030(*this, tested_);
    add(untested_pins{selftest_stage::registers, 0, "this model has no such test"});
    return stage_end::passed;
}

stage_end pinnote::without_drivers(selftest_stage skipped)
{
    add(untested_pins{skipped, lamps::count, "this model takes no part"});
    return stage_end::passed;
}

}  // namespace tamrix
