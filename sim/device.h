// The device object of a simulated programmer.
#pragma once

#include "programmer/devobj.h"
#include "sim/transport.h"

#include <array>
#include <string>

namespace tamrix::sim {

class device final : public hw::devobj {
public:
    device(parts_of_programmer& shared, transport& usb) : shared_{shared}, usb_{usb} {}

    TAMRIX_DEVICE_OPERATIONS(TAMRIX_DEVICE_OVERRIDE)

private:
    void line(std::string text) { shared_.log->line(std::move(text)); }
    void enter(script::act_kind kind, std::int32_t value, std::uint8_t address);
    void pass(microseconds time);
    void take_divider(std::uint8_t low);
    void answer_with_pins();
    bool receive();
    void drop_all();

    parts_of_programmer& shared_;
    transport& usb_;
    std::array<std::uint8_t, 256> control_registers_{};
};

}  // namespace tamrix::sim
