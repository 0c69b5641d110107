#include "selftest_scenes.h"

#include "selftest/pinnote.h"
#include "selftest/pinnote204.h"
#include "selftest/pinnote4.h"
#include "selftest/pinnoteISP.h"
#include "selftest/pinnote_sepm.h"
#include "selftest/small_programmer.h"

#include <utility>

namespace tamrix::tests {

namespace {

/// Shows the self-test of a model with one of its options chosen.
template <class Dialog>
void self_test(stage& on, std::int16_t model, int option = 0)
{
    small_programmer programmer;
    on.session.hardware.source = programmer.source();
    on.session.blocks.modeltype(0) = model;
    Dialog dialog{on.session, on.variables.selftest};
    on.show(dialog, [&] { dialog.Option1(option).click(); });
}

void of_48_pins(stage& on) { self_test<pinnote>(on, 40); }

void calibration(stage& on) { self_test<pinnote>(on, 15, 4); }

void of_40_pins(stage& on) { self_test<pinnote4>(on, 23, 4); }

void of_low_voltage(stage& on) { self_test<pinnote_sepm>(on, 27); }

void of_connector(stage& on) { self_test<pinnoteISP>(on, 11, 1); }

/// The last option, which has the longest hint.
void of_modules(stage& on) { self_test<pinnote204>(on, 39, 7); }

/// Pin 30 is never high: the dialog waits for Continue or Stop.
void fault(stage& on)
{
    small_programmer programmer;
    programmer.spoil = [](std::vector<bool>& pins) { pins[29] = false; };
    on.session.hardware.source = programmer.source();
    on.session.blocks.usbable(0) = bool16_true;
    pinnote dialog{on.session, on.variables.selftest};
    const auto look = std::exchange(on.look, [] {});
    on.variables.selftest.on_event = [&](const selftest_event& event) {
        if (event.what != selftest_event::kind::wait) return;
        look();
        dialog.teststop.click();
    };
    on.show(dialog, [&] { dialog.testbutton.click(); });
}

void pin_map(stage& on, std::uint8_t pinmapmode)
{
    on.variables.selftest.pinmapmode = pinmapmode;
    pinnote map{on.session, on.variables.selftest};
    on.show(map);
}

void map_of_analyzer(stage& on) { pin_map(on, 1); }

void map_of_input(stage& on) { pin_map(on, 2); }

void map_of_output(stage& on) { pin_map(on, 3); }

void map_of_logic_test(stage& on) { pin_map(on, 4); }

constexpr scene all[] = {
    {"selftest", of_48_pins, true},
    {"selftest_calibration", calibration, true},
    {"selftest_fault", fault, true},
    {"selftest_40_pins", of_40_pins, true},
    {"selftest_low_voltage", of_low_voltage, true},
    {"selftest_connector", of_connector, true},
    {"selftest_modules", of_modules, true},
    {"map_analyzer", map_of_analyzer, true},
    {"map_input", map_of_input, true},
    {"map_output", map_of_output, true},
    {"map_logic_test", map_of_logic_test, true},
};

}  // namespace

std::span<const scene> selftest_scenes() { return all; }

}  // namespace tamrix::tests
