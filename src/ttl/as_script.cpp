#include "ttl/as_script.h"

#include "hw/other_side.h"
#include "hw/send.h"
#include "ttl/resultwait.h"

namespace tamrix {

namespace {

enum class outcome : std::uint8_t { passed, failed, again };

/// Opens a script and, once it has been started, asks for its results.
bool send_script_frame(session& plug_in)
{
    constexpr std::int32_t length = 8;  // the bytes behind the third go as they stand
    auto& frame = plug_in.blocks.ubuf1;
    frame(0) = 10;
    frame(1) = 16;
    frame(2) = 64;
    return hw::send(plug_in, length);
}

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

bool fetch_results(const vector_run& run, const queued_pins& pins)
{
    const std::int32_t length = 64 * (run.rows * 6 / 64) + 129;
    for (int attempt = 0; attempt < pins.attempts_to_fetch(); ++attempt) {
        if (!send_script_frame(run.plug_in)) return false;
        if (resultwait(run.plug_in, 1, 0, length) == 0) return true;
    }
    return false;
}

outcome compare_rows(const vector_run& run, queued_pins& pins)
{
    bool failed = false;
    for (int j = 0; j < run.row_count(); ++j) {
        group_bytes readback{};
        for (std::size_t b = 0; b < byte_groups; ++b)
            readback[b] = run.plug_in.blocks.ibuf2(6 * std::int64_t{j} + static_cast<std::int64_t>(b));
        const std::string_view row = run.row(j);
        std::string result{row};
        if (pins.compare(row, readback, result)) failed = true;
        if (failed && run.stopfirst == -1) return outcome::failed;
        if (!failed || run.stopfirst != 0) continue;
        const failed_row told{j + 1, std::string{row}, shown_row(run, result)};
        switch (report_failed_row(run.plug_in, run.logmode, told, pins.report_indent())) {
        case after_report::go_on: break;
        case after_report::forgive: failed = false; break;
        case after_report::start_again: return outcome::again;
        case after_report::end_as_failed: return outcome::failed;
        }
    }
    return failed ? outcome::failed : outcome::passed;
}

}  // namespace

bool run_as_script(const vector_run& run, queued_pins& pins)
{
    session& plug_in = run.plug_in;
    std::uint8_t& prgresult = plug_in.blocks.prgresult(0);
    // Meant, though the result says "passed": a communication error that stands is for the caller to tell.
    if (hw::read_other_side(prgresult) == hw::prgresult_timed_out) return false;
    plug_in.blocks.ubuflg(0) = 16368;
    outcome result = outcome::again;
    while (result == outcome::again) {
        if (!send_script_frame(plug_in)) return true;
        supply_pins supply;
        queue_script(run, pins, supply);
        plug_in.hardware.device().vecstart();
        plug_in.hardware.device().delayms(pins.run_ms());
        if (!fetch_results(run, pins)) return true;
        hw::write_other_side(prgresult, 0);
        result = compare_rows(run, pins);
    }
    return result == outcome::failed;
}

void queue_data(hw::devobj& device, const group_bytes& data)
{
    for (std::size_t b = 0; b < byte_groups; ++b) device.vecout(data[b], static_cast<std::uint8_t>(2 * b));
}

void queue_clocks(hw::devobj& device, const row_bytes& bytes, const group_bytes& data)
{
    group_bytes clocked = data;
    for (std::size_t b = 0; b < byte_groups; ++b) clocked[b] = static_cast<std::uint8_t>(clocked[b] | bytes.clkmask[b]);
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
    for (std::size_t b = 0; b < byte_groups; ++b) device.vecbyte(static_cast<std::uint8_t>(2 * b));
}

}  // namespace tamrix
