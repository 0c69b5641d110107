// The capture over USB: the programmer records by itself, says when it is done, and sends its banks.
#include "instruments/analyzer/analyzer_capture.h"

#include "base/other_side.h"
#include "channel/bulk_read.h"
#include "channel/send.h"
#include "channel/watchdog.h"
#include "messages/message_numbers.h"
#include "session/session.h"

namespace tamrix {

namespace {

/// Byte 0 of a frame of the analyzer, and byte 1.
constexpr std::uint8_t analyzer_command = 0x21, start = 1, stop_now = 0;
constexpr std::uint8_t recorded = 0xAA;  // the reply that the programmer sends by itself
/// What `usbpip2readresult(0)` says of a read.
constexpr std::uint8_t data_arrived = 2, last_good_result = 3;
/// What a bank's read asks for. Intentional: one more than a bank, which is the place of the transport's end marker.
constexpr std::int32_t bank_read_bytes = bank_samples + 1;

}  // namespace

void analyzer_capture::record_by_usb()
{
    switch (fetch()) {
    case usb_end::done: {
        const hw::model model = hw::model_of(plug_in_.blocks.modeltype(0));
        settings_.sampleus = sample_period(model.after_capture, plug_in_.blocks.wfig(1));
        finish();
        break;
    }
    case usb_end::failed: show(message::record_error); break;
    case usb_end::stopped: break;
    }
    stop_recording();
}

/// The steps after success, failure and Stop alike.
void analyzer_capture::stop_recording()
{
    display_.limit(0);
    auto& frame = plug_in_.blocks.ubuf1;
    frame(0) = analyzer_command;
    frame(1) = stop_now;
    hw::send(plug_in_, hw::frame_length::analyzer);
    device().hwreset();
    display_.enable_stop(false);
    display_.enable_record(true);
}

analyzer_capture::usb_end analyzer_capture::fetch()
{
    if (!start_recording()) return usb_end::failed;
    if (!await_recording()) return usb_end::stopped;
    device().delayms(100);
    const int banks = plug_in_.blocks.rambknum(0);
    for (int bank = 0; bank < banks; ++bank)
        if (!read_bank(static_cast<std::uint8_t>(bank))) return usb_end::failed;
    return hw::end_bulk(plug_in_, hw::frame_length::bulk) ? usb_end::done : usb_end::failed;
}

bool analyzer_capture::start_recording()
{
    hw::write_other_side(plug_in_.blocks.ibuf1(0), 0);
    hw::write_other_side(plug_in_.blocks.usbpip0readresult(0), 0);
    auto& frame = plug_in_.blocks.ubuf1;
    frame(0) = analyzer_command;
    frame(1) = start;
    frame(2) = static_cast<std::uint8_t>(settings_.trigmode & 1);
    frame(3) = trigger_mask();
    frame(4) = static_cast<std::uint8_t>(trigger_mask() & static_cast<std::uint16_t>(settings_.triglevel));
    const bool taken = hw::send(plug_in_, hw::frame_length::analyzer);
    show(message::recording);
    return taken;
}

/// The programmer waits for the trigger itself, however long it takes. Returns false after Stop.
bool analyzer_capture::await_recording()
{
    bool16& replied = plug_in_.blocks.usbpip0readresult(0);
    for (;;) {
        if (hw::read_other_side(replied) == 0) {
            plug_in_.screen.doevents();
            if (stopped()) return false;
            continue;
        }
        hw::write_other_side(replied, 0);
        if (hw::read_other_side(plug_in_.blocks.ibuf1(0)) == recorded) return true;
    }
}

/// A bank without room for its whole read is not asked for.
bool analyzer_capture::read_bank(std::uint8_t bank)
{
    const auto samples = plug_in_.blocks.ibuffer.span();
    const std::size_t first = std::size_t{bank} * bank_samples;
    if (first + bank_read_bytes > samples.size()) return false;
    return hw::send_bulk_frame(plug_in_, bank, hw::bulk_from_ram, hw::frame_length::bulk) &&
           await_bank(&samples[first]);
}

/// Stop has no effect here.
bool analyzer_capture::await_bank(std::uint8_t* target)
{
    std::uint8_t& progress = plug_in_.blocks.usbpip2readresult(0);
    hw::write_other_side(progress, 0);
    hw::write_other_side(plug_in_.blocks.prgresult(0), 0);
    read_unfinished_ = true;
    plug_in_.hardware.transport().usbbulkread(target, bank_read_bytes, &progress);
    hw::watchdog limit{plug_in_.screen, plug_in_.blocks.prgresult(0), hw::bulk_read_limit_ms};
    display_.limit(static_cast<int>(hw::bulk_read_limit_ms));
    for (;;) {
        limit.pump();
        const std::uint8_t now = hw::read_other_side(progress);
        if (limit.timed_out()) display_.limit(0);
        if (now > last_good_result || limit.timed_out()) return false;
        if (now == data_arrived) break;
    }
    read_unfinished_ = false;
    return true;
}

}  // namespace tamrix
