#include "selftest/pinnoteISP.h"

#include "messages/message_numbers.h"
#include "selftest/ram_test.h"
#include "session/session.h"

namespace tamrix {

namespace {

using enum option_action;
using enum generator;

constexpr int ground_lamp = 9;

constexpr option_plan options[] = {
    {.does = option_action::system_test, .message = message::system_test},
    // Intentional: the caption says 5 V, and 6000 mV are set.
    {.does = calibration,
     .before = "VCC",
     .message = message::voltage_calibration,
     .after = "(5V)",
     .calibration =
         {.supply = vcc, .millivolts = 6000, .driver = 2, .lamp = 1, .ink = lamps::red, .ground_lamp = ground_lamp},
     .adaptor_note = true},
    // This driver is at no pin of a socket.
    {.does = calibration,
     .before = "VCC",
     .message = message::voltage_calibration,
     .after = "(3.3V)",
     .calibration =
         {.supply = vcc, .millivolts = 3300, .driver = 104, .lamp = 1, .ink = lamps::cyan, .ground_lamp = ground_lamp}},
    {.does = calibration,
     .before = "VPP",
     .message = message::voltage_calibration,
     .after = "(12V)",
     .calibration =
         {.supply = vpp1, .millivolts = 12000, .driver = 3, .lamp = 2, .ink = lamps::cyan, .ground_lamp = ground_lamp}},
};

}  // namespace

pinnoteISP::pinnoteISP(session& plug_in, selftest_variables& variables) : selftest_frame{plug_in, variables, options} {}

forms::layout pinnoteISP::arrangement()
{
    using namespace forms;
    return column({
        stretched(row({
            stretched(column({Picture1, Picture2, Label1})),
            controls_of_tests(),
        })),
        fault_words,
        StatusBar1,
        buttons({OKButton}),
    });
}

void pinnoteISP::on_load() { load_selftest(); }

void pinnoteISP::clearpins()
{
    connector.clear();
    pump();
    pump();
}

void pinnoteISP::show_option(const option_plan& option)
{
    Label1.caption = "";
    if (option.does == calibration) show_calibration(option);
    if (option.adaptor_note) status(plug_in().text(message::note) + plug_in().text(message::needs_ac_adaptor));
}

void pinnoteISP::show_calibration(const option_plan& option)
{
    const calibration_plan& plan = option.calibration;
    connector.paint_lamp(plan.ground_lamp, lamps::blue);
    connector.paint_lamp(plan.lamp, plan.ink);
    Label1.caption = "GND: P" + std::to_string(plan.ground_lamp + 1) + "   " + std::string{option.before} + ": P" +
                     std::to_string(plan.lamp + 1);
}

stage_end pinnoteISP::system_test()
{
    static constexpr stage stages[] = {&pinnoteISP::start, &pinnoteISP::test_ram, &pinnoteISP::let_read};
    return in_order(*this, std::span<const stage>{stages});
}

/// No option leads here.
stage_end pinnoteISP::output_test() { return stage_end::failed; }

/// Intentional: without a beep, unlike the other dialogs.
void pinnoteISP::signal_end() {}

stage_end pinnoteISP::start()
{
    clearpins();
    return reset_programmer();
}

/// Bad RAM does not make the run fail.
stage_end pinnoteISP::test_ram()
{
    if (!by_usb()) {
        add(untested_pins{.stage = selftest_stage::ram, .reason = "only tested by USB"});
        return stage_end::passed;
    }
    announce(message::test, " RAM ");
    const int good = test_small_ram(*this);
    keep_ram_level(*this, good, ram_block_bytes);
    status(" RAM level= " + std::to_string(good));
    device().delayms(5000);
    return stage_end::passed;
}

stage_end pinnoteISP::let_read()
{
    device().delayms(5000);
    return stage_end::passed;
}

}  // namespace tamrix
