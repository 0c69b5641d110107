#include "ttl/row_by_row.h"

#include "hw/other_side.h"
#include "hw/send.h"
#include "ttl/prepare.h"

namespace tamrix {

namespace {

enum class outcome : std::uint8_t { passed, failed, again };

outcome play_rows(const vector_run& run, immediate_pins& pins, supply_pins& supply)
{
    bool failed = false;
    for (int j = 0; j < run.row_count(); ++j) {
        if (j == 0 && run.powers_the_device()) {
            supply = run.supply();
            power_on(run.plug_in, supply);
        }
        const std::string_view row = run.row(j);
        if (!pins.play(row, supply)) return outcome::failed;
        std::string result{row};
        if (pins.compare(row, result)) failed = true;
        if (failed && run.stopfirst == -1) return outcome::failed;
        if (!failed || run.stopfirst != 0) continue;
        // In the log every later row is reported too, passing or not: meant, the flag is not cleared there.
        switch (report_failed_row(run.plug_in, run.logmode, {j + 1, std::string{row}, shown_row(run, result)})) {
        case after_report::go_on: break;
        case after_report::forgive: failed = false; break;
        case after_report::start_again: return outcome::again;
        case after_report::end_as_failed: return outcome::failed;
        }
    }
    return failed ? outcome::failed : outcome::passed;
}

/// VCC goes by its own driver here, whatever the model: meant, the reset that follows drops what is left.
bool prepare_again(session& plug_in, immediate_pins& pins, const supply_pins& supply)
{
    hw::devobj& device = plug_in.hardware.device();
    device.vccpin(supply.vcode, 0);
    device.gndpin(supply.gcode, 0);
    if (!pins.release()) return false;
    device.hwreset();
    device.setvcc(logic_millivolts);
    device.busmode(0);
    device.delayms(100);
    return true;
}

}  // namespace

bool run_row_by_row(const vector_run& run, immediate_pins& pins)
{
    supply_pins supply;
    outcome result = outcome::again;
    while ((result = play_rows(run, pins, supply)) == outcome::again) {
        if (!prepare_again(run.plug_in, pins, supply)) return true;
    }
    power_off(run.plug_in, supply);
    const bool released = pins.release();
    return result == outcome::failed || !released;
}

bool send_pin_frame(session& plug_in, const group_bytes& first, const group_bytes& second)
{
    constexpr std::uint8_t pin_frame = 5;
    constexpr std::int32_t length = 13;
    auto& frame = plug_in.blocks.ubuf1;
    frame(0) = pin_frame;
    for (std::size_t b = 0; b < byte_groups; ++b) {
        frame(static_cast<std::int64_t>(1 + 2 * b)) = first[b];
        frame(static_cast<std::int64_t>(2 + 2 * b)) = second[b];
    }
    return hw::send(plug_in, length);
}

bool send_release_frame(session& plug_in)
{
    group_bytes released{};
    released.fill(255);
    return send_pin_frame(plug_in, released, released);
}

bool fetch_pin_reply(session& plug_in, group_bytes& readback)
{
    if (!plug_in.hardware.device().replywait(3, 0, 0)) return false;
    for (std::size_t b = 0; b < byte_groups; ++b)
        readback[b] = hw::read_other_side(plug_in.blocks.ibuf1(static_cast<std::int64_t>(b)));
    return true;
}

}  // namespace tamrix
