#include "selftest/pinnote_sepm.h"

#include "messages/message_numbers.h"
#include "selftest/output_test.h"
#include "selftest/ram_test.h"
#include "selftest/register_test.h"
#include "selftest/small_ram_test.h"
#include "session/session.h"

namespace tamrix {

namespace {

using enum option_action;

constexpr option_plan vcc_calibration(std::string_view volts, std::int32_t millivolts)
{
    return {.does = calibration,
            .before = "VCC",
            .message = message::voltage_calibration,
            .after = volts,
            .calibration = {
                .supply = generator::vcc, .millivolts = millivolts, .driver = 3, .lamp = 21, .ink = lamps::red}};
}

constexpr option_plan options[] = {
    {.does = option_action::system_test, .message = message::system_test},
    vcc_calibration("(1.8V)", 1800),
    vcc_calibration("(3V)", 3000),
    vcc_calibration("(5V)", 5000),
    {.does = option_action::output_test, .message = message::output_test},
};

}  // namespace

pinnote_sepm::pinnote_sepm(session& plug_in, selftest_variables& variables)
    : pinnote_sepm{plug_in, variables, selftest_model_of(plug_in.blocks.modeltype(0))}
{}

pinnote_sepm::pinnote_sepm(session& plug_in, selftest_variables& variables, const selftest_model& tested)
    : small_socket_frame{plug_in, variables, tested, {.options = options}}
{}

stage_end pinnote_sepm::system_test()
{
    static constexpr stage stages[] = {
        &pinnote_sepm::start,     &pinnote_sepm::test_ram,    &pinnote_sepm::announce_input,
        &pinnote_sepm::test_pins, &pinnote_sepm::test_vpp,    &pinnote_sepm::test_vcc,
        &pinnote_sepm::reset,     &pinnote_sepm::test_ground, &pinnote_sepm::test_registers,
    };
    return in_order(*this, std::span<const stage>{stages});
}

stage_end pinnote_sepm::output_test() { return test_outputs_in_two_parts(*this, access()); }

stage_end pinnote_sepm::test_ram() { return small_socket_frame::test_ram(test_ram_of_two_blocks, ram_block_bytes); }

stage_end pinnote_sepm::test_registers()
{
    announce(message::test, " IC ");
    return test3030(*this, tested());
}

}  // namespace tamrix
