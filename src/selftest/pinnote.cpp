#include "selftest/pinnote.h"

#include "messages/message_numbers.h"
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
                   lamps::socket_of_48}
{}

stage_end pinnote::system_test()
{
    clearpins();
    return stage_end::passed;
}

stage_end pinnote::output_test()
{
    clearpins();
    return stage_end::passed;
}

void pinnote::show_end(stage_end end)
{
    const bool system = option().does == option_action::system_test;
    const std::string name = plug_in().text(system ? message::system_test : message::output_test);
    if (end == stage_end::not_answered || end == stage_end::communication_error) return;
    status(name + (end == stage_end::passed ? " OK!" : plug_in().text(message::fail)));
}

}  // namespace tamrix
