#include "ttl/run/as_script.h"

#include "base/other_side.h"
#include "channel/bulk_read.h"
#include "channel/ports.h"
#include "channel/send.h"
#include "session/session.h"

#include <optional>
#include <utility>

namespace tamrix {

namespace {

using kind = run_outcome::kind;

constexpr double results_limit_ms = 4000;

void queue_script(const vector_run& run, queued_pins& pins, supply_pins& supply)
{
    for (int j = 0; j < run.row_count(); ++j) {
        if (j == 0 && run.powers_the_device()) {
            supply = run.supply();
            pins.queue_power_on(supply);
        }
        pins.queue_row(run.row(j), supply);
    }
    queue_power_off(run.plug_in, supply);
    pins.queue_release();
}

/// What kept the results from coming; nothing where they are there.
std::optional<kind> fetch_results(const vector_run& run, const queued_pins& pins)
{
    const std::int32_t length = 64 * (run.rows * 6 / 64) + 129;
    for (int attempt = 0; attempt < pins.attempts_to_fetch(); ++attempt) {
        if (!hw::send_script_frame(run.plug_in)) return kind::refused_frame;
        if (hw::await_block(run.plug_in, {.target = hw::in_ibuf2(run.plug_in, length),
                                          .limit_ms = results_limit_ms,
                                          .end = hw::block_end::data}))
            return std::nullopt;
        // Intentional: a read that fails at once counts as one that timed out.
        hw::write_other_side(run.plug_in.blocks.prgresult(0), hw::prgresult_timed_out);
    }
    return kind::timed_out;
}

/// Nothing where the script is to be played again.
std::optional<run_outcome> compare_rows(const vector_run& run, queued_pins& pins)
{
    run_outcome outcome{.what = kind::passed};
    for (int j = 0; j < run.row_count(); ++j) {
        hw::port_bytes readback{};
        for (std::size_t b = 0; b < hw::port_count; ++b)
            readback[b] = run.plug_in.blocks.ibuf2(6 * std::int64_t{j} + static_cast<std::int64_t>(b));
        const std::string_view row = run.row(j);
        std::string result{row};
        const bool failed = pins.compare(row, readback, result);
        switch (judge_row(run, {j, failed, std::move(result)}, outcome, pins.report_indent())) {
        case after_row::go_on: break;
        case after_row::start_again: return std::nullopt;
        case after_row::end: return outcome;
        }
    }
    return outcome;
}

}  // namespace

run_outcome run_as_script(const vector_run& run, queued_pins& pins)
{
    session& plug_in = run.plug_in;
    std::uint8_t& prgresult = plug_in.blocks.prgresult(0);
    if (hw::read_other_side(prgresult) == hw::prgresult_timed_out) return {.what = kind::not_played};
    plug_in.blocks.ubuflg(0) = 16368;
    for (;;) {
        if (!hw::send_script_frame(plug_in)) return {.what = kind::refused_frame};
        supply_pins supply;
        queue_script(run, pins, supply);
        plug_in.hardware.device().vecstart();
        plug_in.hardware.device().delayms(pins.run_ms());
        if (const auto broken_off = fetch_results(run, pins)) return {.what = *broken_off};
        hw::write_other_side(prgresult, 0);
        if (auto outcome = compare_rows(run, pins)) return *std::move(outcome);
    }
}

void queue_data(hw::devobj& device, const hw::port_bytes& data)
{
    for (std::size_t b = 0; b < hw::port_count; ++b) device.vecout(data[b], hw::data_register(b));
}

void queue_clocks(hw::devobj& device, const row_bytes& bytes, const hw::port_bytes& data)
{
    hw::port_bytes clocked = data;
    for (std::size_t b = 0; b < hw::port_count; ++b)
        clocked[b] = static_cast<std::uint8_t>(clocked[b] | bytes.clkmask[b]);
    if (bytes.hasc) {
        queue_data(device, clocked);
        queue_data(device, data);
    }
    if (bytes.hask) {
        queue_data(device, data);
        queue_data(device, clocked);
    }
}

void queue_reads(hw::devobj& device)
{
    for (std::size_t b = 0; b < hw::port_count; ++b) device.vecbyte(hw::data_register(b));
}

}  // namespace tamrix
