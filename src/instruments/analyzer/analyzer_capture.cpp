#include "instruments/analyzer/analyzer_capture.h"

#include "base/arith.h"
#include "channel/ports.h"
#include "channel/usb_route.h"
#include "messages/message_numbers.h"
#include "session/session.h"

#include <exception>

namespace tamrix {

namespace {

constexpr std::uint8_t ground_pin = 5, port = 0;
constexpr std::int32_t samples_by_registers = 131072;
constexpr std::uint8_t generation_of_faster_clock = 17;
constexpr std::int32_t safe_vpp_millivolts = 5000;

/// True from its construction to its end, on every way out.
class flag_raised {
public:
    explicit flag_raised(bool& flag) : flag_{flag} { flag_ = true; }
    ~flag_raised() { flag_ = false; }
    flag_raised(const flag_raised&) = delete;
    flag_raised& operator=(const flag_raised&) = delete;

private:
    bool& flag_;
};

}  // namespace

double sample_period(hw::sampling speed, std::uint8_t generation)
{
    switch (speed) {
    case hw::sampling::by_generation: return generation == generation_of_faster_clock ? 3.5 : 3.8;
    case hw::sampling::slow: return 4.7;
    default: return 3.4;
    }
}

hw::devobj& analyzer_capture::device() { return plug_in_.hardware.device(); }

void analyzer_capture::show(int message)
{
    display_.show_status(1, plug_in_.text(message::record_status) + plug_in_.text(message));
}

/// Where the programmer does not answer, the buttons stay as they are.
void analyzer_capture::record()
{
    const flag_raised during{running_};
    display_.clear();
    if (device().hwreset() == 1) return device().hwrelease();
    socket_used_ = true;
    device().busmode(0);
    device().gndpin(ground_pin, 1);
    device().regout(255, hw::mask_register(port));
    device().delayms(100);
    display_.enable_stop(true);
    display_.enable_record(false);
    stopflag_ = false;
    display_.show_status(2, plug_in_.text(message::record_time));
    if (hw::usb_is_true(plug_in_.blocks.usbable(0))) {
        record_by_usb();
    } else {
        record_by_registers();
    }
}

/// Intentional: Stop leaves both buttons off, so that the dialog has to be opened again.
void analyzer_capture::record_by_registers()
{
    if (settings_.trigmode == -1 && !find_trigger()) return;
    show(message::recording);
    const double started = plug_in_.screen.seconds();
    const auto samples = plug_in_.blocks.ibuffer.span();
    if (!read_port(samples.data(), static_cast<std::int64_t>(samples.size()))) {
        device().hwrelease();
        show(message::record_error);  // intentional: the end of every run replaces it at once
    }
    const auto elapsed = static_cast<float>(plug_in_.screen.seconds() - started);
    settings_.sampleus = double{elapsed} * 1000000 / samples_by_registers;
    display_.show_status(2, plug_in_.text(message::record_time) + arith::plain(elapsed));
    finish();
    display_.enable_stop(false);
    display_.enable_record(true);
}

/// Polls until the pin has the level; only each 131072 polls the person gets a turn. Returns false after Stop.
bool analyzer_capture::find_trigger()
{
    const std::string searching = plug_in_.text(message::record_status) + plug_in_.text(message::search_trigger);
    for (std::int32_t polls = 0;;) {
        if (polls > samples_by_registers) {
            plug_in_.screen.doevents();
            if (stopped()) return false;
            polls = 0;
        }
        ++polls;
        const auto pins = static_cast<std::uint8_t>(device().regin(hw::data_register(port)));
        display_.show_status(1, searching);
        const bool high = (pins & trigger_mask()) != 0;
        if (high == (settings_.triglevel != 0)) return true;
    }
}

/// One read more than the sample period is divided by: the period is that of older recordings. A sample without room is
/// dropped, and the reads go on, so that the period stays true. Returns false if a read failed, which ends them.
bool analyzer_capture::read_port(std::uint8_t* first, std::int64_t room)
{
    hw::devobj& polled = device();
    for (std::int64_t i = 0; i <= samples_by_registers; ++i) {
        const std::int32_t pins = polled.regin(hw::data_register(port));
        if (pins == -1) return false;
        if (i < room) first[i] = static_cast<std::uint8_t>(pins);
    }
    return true;
}

void analyzer_capture::finish()
{
    show(message::record_ok);
    display_.draw();
}

/// After the last run. A run that was closed has done its own last steps by then. A programmer that is gone can do
/// nothing more; why it went was said where it happened.
void analyzer_capture::leave_socket_safe()
{
    if (!socket_used_) return;
    socket_used_ = false;
    try {
        device().setvpp(safe_vpp_millivolts, 0);
        device().setvpp(safe_vpp_millivolts, 1);
        device().hwreset();
    } catch (const std::exception&) {
    }
    // The host may give the buffer back from now on.
    if (read_unfinished_) plug_in_.hardware.forget();
    read_unfinished_ = false;
}

}  // namespace tamrix
