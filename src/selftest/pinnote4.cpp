#include "selftest/pinnote4.h"

#include "channel/ports.h"
#include "messages/message_numbers.h"
#include "selftest/output_sweep.h"
#include "selftest/small_ram_test.h"
#include "selftest/small_socket_lines.h"
#include "session/session.h"

namespace tamrix {

namespace {

using enum option_action;
using enum generator;

constexpr option_plan options[] = {
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
     .before = "VCC",
     .message = message::voltage_calibration,
     .after = "(3.3V)",
     .calibration = {.supply = vcc, .millivolts = 3300, .driver = 4, .lamp = 20, .ink = lamps::red}},
    {.does = calibration,
     .before = "VPP1",
     .message = message::voltage_calibration,
     .after = "(25V)",
     .calibration = {.supply = vpp1, .millivolts = 25000, .driver = 3, .lamp = 21, .ink = lamps::green},
     .adaptor_note = true,
     .offered = false},
    {.does = option_action::output_test, .message = message::output_test},
};

// Byte 13 of a pin frame.
constexpr std::int64_t pin_mode_byte = 13;
constexpr std::uint8_t pin_mode_of_small_socket = 10;

constexpr sweep_plan sweeps[] = {
    {.first = 4, .limit = 24, .level = 1, .side = 0},
    {.first = 4, .limit = 24, .level = 0, .side = 0},
    {.first = 4, .limit = 24, .level = 0, .side = 1},
    {.first = 4, .limit = 24, .level = 1, .side = 1},
};
// A count of all sweeps would not do: a single open line whose pin floats high gives 40 faults in the four.
constexpr int no_board[] = {20, 40};

constexpr const char* drivers_by_generation = "only generation 17 tests the drivers";

}  // namespace

pinnote4::pinnote4(session& plug_in, selftest_variables& variables)
    : pinnote4{plug_in, variables, selftest_model_of(plug_in.blocks.modeltype(0))}
{}

pinnote4::pinnote4(session& plug_in, selftest_variables& variables, const selftest_model& tested)
    : small_socket_frame{
          plug_in,
          variables,
          tested,
          {.options = options, .lamp_of_line = lamps::of_small_socket_line, .timing = {.settle_ms = 200}}}
{}

stage_end pinnote4::system_test()
{
    static constexpr stage stages[] = {&pinnote4::start, &pinnote4::test_ram, &pinnote4::announce_input,
                                       &pinnote4::drive_all_high, &pinnote4::test_pins};
    static constexpr stage driver_stages[] = {&pinnote4::test_vpp, &pinnote4::test_vcc, &pinnote4::reset,
                                              &pinnote4::test_ground};
    if (const stage_end end = in_order(*this, std::span<const stage>{stages}); end != stage_end::passed) return end;
    if (generation_17()) return in_order(*this, std::span<const stage>{driver_stages});
    say_drivers_untested();
    return stage_end::passed;
}

/// Intentional: the switch of the inputs is written twice, and four of the six ports are set by hand.
stage_end pinnote4::output_test()
{
    device().hwreset();
    clearpins();
    status(plug_in().text(message::dot) + plug_in().text(message::output_test));
    device().regout(0, level_switch);
    device().regout(255, level_switch);
    for (std::size_t port = 1; port <= 4; ++port) device().regout(255, hw::data_register(port));
    for (const sweep_plan& plan : sweeps)
        if (const stage_end end = sweep_outputs(*this, access(), no_board, plan); end != stage_end::passed) return end;
    return stage_end::passed;
}

stage_end pinnote4::test_ram() { return small_socket_frame::test_ram(test_little_ram, little_ram_bytes); }

/// The byte that this sets stays in the later frames of the run.
stage_end pinnote4::drive_all_high()
{
    plug_in().blocks.ubuf1(pin_mode_byte) = pin_mode_of_small_socket;
    if (!send_pins(*this, access(), all_ports(255), all_ports(0))) return communication_error();
    device().delayms(500);
    device().delayms(500);
    if (!send_pins(*this, access(), all_ports(255), hw::released_ports)) return communication_error();
    return stage_end::passed;
}

void pinnote4::say_drivers_untested()
{
    const auto say = [this](selftest_stage skipped, const driver_pins& drivers) {
        const int count = static_cast<int>(drivers.pins.size()) + drivers.unknown;
        add(untested_pins{.stage = skipped, .count = count, .reason = drivers_by_generation});
    };
    say(selftest_stage::vpp, tested().vpp);
    say(selftest_stage::vcc, tested().vcc);
    say(selftest_stage::ground, tested().ground);
}

}  // namespace tamrix
