// Records samples of P21 to P28 into `ibuffer`: over USB the programmer records into its own RAM, which is then read
// bank by bank; otherwise its port is polled.
#pragma once

#include "channel/model.h"
#include "instruments/analyzer/analyzer_settings.h"

#include <cstdint>
#include <string>

namespace tamrix {

class session;

namespace hw {
class devobj;
}

/// Samples that one bank of the programmer's RAM holds.
inline constexpr std::int32_t bank_samples = 32768;

/// Microseconds a sample, over USB.
double sample_period(hw::sampling speed, std::uint8_t generation);

/// Where a capture shows how far it is.
class capture_display {
public:
    virtual ~capture_display() = default;
    /// Empties the picture and its time labels.
    virtual void clear() = 0;
    /// Panels are numbered from 1.
    virtual void show_status(int panel, const std::string& words) = 0;
    virtual void enable_record(bool on) = 0;
    virtual void enable_stop(bool on) = 0;
    /// The limit of a wait begins; 0 ends it.
    virtual void limit(int milliseconds) = 0;
    /// Draws what was recorded.
    virtual void draw() = 0;
    /// True after the window was closed, which stops a run as stop() does.
    virtual bool closed() const = 0;
};

class analyzer_capture {
public:
    analyzer_capture(session& plug_in, analyzer_settings& settings, capture_display& display)
        : plug_in_{plug_in}, settings_{settings}, display_{display}
    {}

    /// A whole run. Waits pump messages; what they call may use stop(), but not record(). Throws programmer_error.
    void record();
    /// The run notices it in its waits for the trigger and for the end of the recording, and nowhere else.
    void stop() { stopflag_ = true; }
    bool running() const { return running_; }
    /// After the last run, before the dialog goes. Throws nothing.
    void leave_socket_safe();

private:
    enum class usb_end : std::uint8_t { done, stopped, failed };

    void record_by_registers();
    bool find_trigger();
    bool read_port(std::uint8_t* first, std::int64_t room);
    void record_by_usb();
    usb_end fetch();
    bool start_recording();
    bool await_recording();
    bool read_bank(std::uint8_t bank);
    bool await_bank(std::uint8_t* target);
    void stop_recording();
    void finish();

    hw::devobj& device();
    void show(int message);
    std::uint8_t trigger_mask() const { return static_cast<std::uint8_t>(1U << (settings_.trigpin & 7U)); }
    bool stopped() const { return stopflag_ || display_.closed(); }

    session& plug_in_;
    analyzer_settings& settings_;
    capture_display& display_;
    bool stopflag_ = false;
    bool running_ = false;
    bool socket_used_ = false;      // since the programmer was last left safe
    bool read_unfinished_ = false;  // a bank may still be on its way
};

}  // namespace tamrix
