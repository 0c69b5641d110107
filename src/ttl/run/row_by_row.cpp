#include "ttl/run/row_by_row.h"

#include "session/session.h"
#include "ttl/run/prepare.h"

#include <optional>
#include <utility>

namespace tamrix {

namespace {

using kind = run_outcome::kind;

/// Nothing where the rows are to be played again.
std::optional<run_outcome> play_rows(const vector_run& run, immediate_pins& pins, supply_pins& supply)
{
    run_outcome outcome{.what = kind::passed};
    for (int j = 0; j < run.row_count(); ++j) {
        if (j == 0 && run.powers_the_device()) {
            supply = run.supply();
            power_on(run.plug_in, supply);
        }
        const std::string_view row = run.row(j);
        const bool driven = pins.drive(row, supply);
        if (!driven || !pins.read()) {
            outcome.what = driven ? kind::lost_reply : kind::refused_frame;
            return outcome;
        }
        std::string result{row};
        const bool failed = pins.compare(row, result);
        switch (judge_row(run, {j, failed, std::move(result)}, outcome)) {
        case after_row::go_on: break;
        case after_row::start_again: return std::nullopt;
        case after_row::end: return outcome;
        }
    }
    return outcome;
}

/// Intentional: VCC goes by its own driver here, whatever the model. The reset that follows drops what is left.
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

run_outcome run_row_by_row(const vector_run& run, immediate_pins& pins)
{
    supply_pins supply;
    std::optional<run_outcome> played;
    while (!(played = play_rows(run, pins, supply))) {
        if (!prepare_again(run.plug_in, pins, supply)) return {.what = kind::refused_frame};
    }
    power_off(run.plug_in, supply);
    // Told even after a failed row: the socket is still driven.
    if (!pins.release() && !played->communication_failed()) played->what = kind::refused_frame;
    return *played;
}

}  // namespace tamrix
