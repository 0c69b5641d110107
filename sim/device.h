// The device object of a simulated programmer.
#pragma once

#include "programmer/devobj.h"
#include "sim/transport.h"

#include <array>

namespace tamrix::sim {

class device final : public hw::devobj {
public:
    /// A read of a register takes `read_time`.
    device(parts_of_programmer& shared, transport& usb, microseconds read_time)
        : shared_{shared}, usb_{usb}, read_time_{read_time}
    {}

    TAMRIX_DEVICE_OPERATIONS(TAMRIX_DEVICE_OVERRIDE)

private:
    template <class... Words>
    void line(const Words&... words)
    {
        shared_.log->line(words...);
    }
    void enter(script::act_kind kind, std::int32_t value, std::uint8_t address);
    void pass(microseconds time);
    void answer_with_pins();
    bool receive();
    void drop_all();

    parts_of_programmer& shared_;
    transport& usb_;
    microseconds read_time_;
    std::array<std::uint8_t, 256> control_registers_{};
};

}  // namespace tamrix::sim
