#include "selftest/pinnote204.h"

#include "base/other_side.h"
#include "channel/module_frames.h"
#include "messages/message_numbers.h"
#include "selftest/driver_test.h"
#include "selftest/model_plan.h"
#include "selftest/output_test.h"
#include "selftest/pin_read.h"
#include "selftest/pinnote.h"
#include "selftest/ram_test.h"
#include "selftest/ramcheck_lm4.h"
#include "selftest/xcinit_LM.h"
#include "session/session.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr std::uint8_t modules = 4;
constexpr int option_low_first = 7;
constexpr driver_pins every_pin{.pins = driver_lists::whole_socket};

/// As the others with two generators, and one Output Test more.
const std::vector<option_plan>& options()
{
    static const std::vector<option_plan> all = [] {
        const selftest_plan common = pinnote_plan({});
        std::vector<option_plan> made{common.begin(), common.end()};
        made.push_back({.does = option_action::output_test, .before = "ISP ", .message = message::output_test});
        return made;
    }();
    return all;
}

}  // namespace

pinnote204::pinnote204(session& plug_in, selftest_variables& variables)
    : socket_frame{plug_in, variables, options(), lamps::socket_of_48, 2}, access_{.length = hw::frame_length::large}
{}

/// The hints are long.
forms::layout pinnote204::arrangement() { return around_socket(&Label4); }

void pinnote204::hint(const std::string& words) { Label4.caption = words; }

void pinnote204::show_option(const option_plan& option)
{
    socket_frame::show_option(option);
    Label4.visible = true;
    if (option.does == option_action::output_test) hint(plug_in().text(message::needs_test_board) + "( No 1 )");
}

/// A module shows its result until the person turns to another option.
void pinnote204::Option1_Click(int index)
{
    if (signalled_ != 0) {
        hw::send_module_signal(plug_in(), signalled_, true);
        signalled_ = 0;
    }
    socket_frame::Option1_Click(index);
}

// System Test.

stage_end pinnote204::system_test()
{
    started_seconds_ = plug_in().screen.seconds();
    access_.slot = 0;
    static constexpr stage unit[] = {&pinnote204::start, &pinnote204::test_unit_ram};
    stage_end end = in_order(*this, std::span<const stage>{unit});
    while (end == stage_end::passed && access_.slot < modules) {
        ++access_.slot;
        end = test_module();
    }
    // Where a run ends early the mark can be left there by which a frame goes to a module: the next ones are the
    // unit's.
    plug_in().blocks.ubuf1(hw::stage_byte_of_bulk_frame) = 0;
    return end;
}

stage_end pinnote204::test_module()
{
    static constexpr stage stages[] = {
        &pinnote204::start_module, &pinnote204::test_module_ram,   &pinnote204::read_low_inputs,
        &pinnote204::load_fpga,    &pinnote204::read_high_inputs,  &pinnote204::drive_high_and_release,
        &pinnote204::test_ground,  &pinnote204::start_for_outputs, &pinnote204::test_vpp,
        &pinnote204::test_vcc,
    };
    return in_order(*this, std::span<const stage>{stages});
}

stage_end pinnote204::start()
{
    clearpins();
    if (const stage_end end = reset_programmer(); end != stage_end::passed) return end;
    select_common_board();
    device().delayms(100);
    return stage_end::passed;
}

/// Bad RAM is shown; it does not make the run fail.
stage_end pinnote204::test_unit_ram()
{
    auto& blocks = plug_in().blocks;
    status(plug_in().text(message::test) + "Lomax4  RAM .....");
    blocks.rambknum(0) = 0;
    const int good = test_large_ram(*this);
    blocks.rambknum(0) = static_cast<std::uint8_t>(good);
    status(" Lomax4 RAM level  = " + std::to_string(good));
    if (good != blocks_of_module_ram) bad_ram_level("!!!!!!!!!!           ", 10000);
    blocks.ramlg(0) = good << 15;
    device().delayms(5000);
    device().delayms(5000);
    return stage_end::passed;
}

void pinnote204::bad_ram_level(const std::string& words, std::int32_t wait_ms)
{
    status(words);
    device().delayms(wait_ms);
}

stage_end pinnote204::reset_module(std::int32_t wait_ms)
{
    if (!hw::send_module_reset(plug_in(), access_.slot)) return communication_error();
    device().delayms(wait_ms);
    return stage_end::passed;
}

stage_end pinnote204::reset_and_start_module(std::int32_t reset_wait_ms, std::int32_t start_wait_ms)
{
    if (const stage_end end = reset_module(reset_wait_ms); end != stage_end::passed) return end;
    if (!hw::send_module_start(plug_in(), access_.slot)) return communication_error();
    device().delayms(start_wait_ms);
    return stage_end::passed;
}

stage_end pinnote204::start_module() { return reset_and_start_module(200, 500); }

stage_end pinnote204::test_module_ram()
{
    const std::string name = "Lomax1  RAM" + module_number() + " ) ";
    status(name + " ");
    const int good = ramcheck_lm4(*this, access_.slot);
    plug_in().blocks.rambknum(0) = static_cast<std::uint8_t>(good);
    status(name + "level= " + std::to_string(good));
    if (good == blocks_of_module_ram || closed()) return stage_end::passed;
    bad_ram_level("!!!!!!!!!!              ", 20000);
    return start_module();
}

stage_end pinnote204::read_low_inputs()
{
    status(module_number());
    device().delayms(5000);
    if (!generation_17()) add(untested_pins{selftest_stage::input, unread_pins, not_read_by_generation});
    return test_inputs(*this, access_, 0);
}

stage_end pinnote204::load_fpga()
{
    if (const stage_end end = reset_module(200); end != stage_end::passed) return end;
    std::uint8_t mode = 0;
    xcinit_LM(*this, 0, mode, access_.slot);
    if (hw::read_other_side(plug_in().blocks.prgresult(0)) != module_not_loaded) return stage_end::passed;
    add(selftest_fault{.stage = selftest_stage::fpga, .slot = access_.slot});
    return stage_end::failed;
}

stage_end pinnote204::read_high_inputs()
{
    status(plug_in().text(message::input_test));
    return test_inputs(*this, access_, 1);
}

stage_end pinnote204::drive_high_and_release()
{
    for (int time = 0; time < 2; ++time) {
        if (!send_pins(*this, access_, all_ports(255), all_ports(0))) return communication_error();
        device().delayms(2000);
    }
    if (!send_pins(*this, access_, all_ports(255), all_ports(255))) return communication_error();
    device().delayms(500);
    device().delayms(500);
    return stage_end::passed;
}

/// Intentional: what this stage finds is neither shown nor asked about, and does not make the run fail.
stage_end pinnote204::test_ground()
{
    announce(message::output_test, " GND ");
    return test_drivers(*this, access_, ground_drivers, every_pin, on_fault::keep_quiet);
}

/// The frame releases all pins: what it drove would be read as a fault of the drivers.
stage_end pinnote204::start_for_outputs()
{
    if (const stage_end end = start_module(); end != stage_end::passed) return end;
    device().delayms(5000);
    device().delayms(500);
    if (!send_pins(*this, access_, all_ports(255), all_ports(255))) return communication_error();
    device().delayms(1000);
    return stage_end::passed;
}

stage_end pinnote204::test_vpp()
{
    announce(message::output_test, " VPP ");
    return test_drivers(*this, access_, vpp_drivers, every_pin, on_fault::ask);
}

stage_end pinnote204::test_vcc()
{
    announce(message::output_test, " VCC ");
    const stage_end end = test_drivers(*this, access_, vcc_drivers, every_pin, on_fault::ask);
    if (end == stage_end::passed) device().delayms(1000);
    return end;
}

// Output Tests.

/// Each module has a result of its own; the run's is the worst of them.
stage_end pinnote204::output_test()
{
    stage_end worst = stage_end::passed;
    for (access_.slot = 1;; ++access_.slot) {
        const stage_end end = test_module_outputs();
        if (end == stage_end::stopped || end == stage_end::communication_error) return end;
        show_module_result(end);
        if (worst != stage_end::failed && end != stage_end::passed) worst = end;
        if (access_.slot == modules) return worst;
        if (const stage_end waited = wait_for_board(); waited != stage_end::passed) return waited;
    }
}

stage_end pinnote204::test_module_outputs()
{
    if (const stage_end end = reset_and_start_module(500, 500); end != stage_end::passed) return end;
    const auto pattern = testsel() == option_low_first ? output_pattern::low_first : output_pattern::high_first;
    const stage_end end = test_outputs_of_whole_sides(*this, access_, pattern);
    return end == stage_end::passed && testbusy() == 1 ? stage_end::failed : end;
}

void pinnote204::show_module_result(stage_end end)
{
    if (end == stage_end::no_test_board) {
        status(plug_in().text(message::no_test_board) + module_number());
    } else {
        const bool passed = end == stage_end::passed;
        status(plug_in().text(message::output_test) +
               (passed ? " OK!" + module_number() : plug_in().text(message::fail)));
    }
    hw::send_module_signal(plug_in(), access_.slot, end == stage_end::passed);
    signalled_ = access_.slot;
}

stage_end pinnote204::wait_for_board()
{
    status("( No " + std::to_string(access_.slot + 1));
    return await_person() == decision::stop ? stage_end::stopped : stage_end::passed;
}

std::string pinnote204::module_number() const { return " ( No " + std::to_string(access_.slot); }

/// What an Output Test came to was said module by module.
void pinnote204::show_end(stage_end end)
{
    const bool system = option().does == option_action::system_test;
    if (system || end == stage_end::stopped) socket_frame::show_end(end);
    if (!system || end == stage_end::not_answered) return;
    const auto seconds = static_cast<int>(plug_in().screen.seconds() - started_seconds_);
    status(std::to_string(seconds) + " Sec ", 2);
}

}  // namespace tamrix
