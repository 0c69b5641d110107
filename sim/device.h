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

    void setvcc(std::int32_t millivolts) override;
    void setvpp(std::int32_t millivolts, std::uint8_t channel) override;
    void gndpin(std::uint8_t pin, std::uint8_t state) override;
    void vccpin(std::uint8_t pin, std::uint8_t state) override;
    void vpppin(std::uint8_t pin, std::uint8_t state) override;
    void busmode(std::int32_t mode) override;
    void hwinit() override;
    std::int32_t hwreset() override;
    std::int32_t ctlout(std::int32_t value, std::uint8_t address) override;
    std::int32_t ctlin(std::uint8_t address) override;
    void regout(std::int32_t value, std::uint8_t address) override;
    std::int32_t regin(std::uint8_t address) override;
    void delayms(std::int32_t milliseconds) override;
    void delayus(std::int32_t count) override;
    bool replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra) override;
    void vecout(std::int32_t value, std::uint8_t address) override;
    void vecstart() override;
    void vecbyte(std::uint8_t address) override;
    void vecdelay(std::int32_t count) override;
    void vecdelay2(std::int32_t count) override;
    void vecgnd(std::uint8_t pin, std::uint8_t state) override;
    void vecvcc(std::uint8_t pin, std::uint8_t state) override;
    void vecvpp(std::uint8_t pin, std::uint8_t state) override;
    void replycheck(std::int32_t count) override;
    void hwrelease() override;
    void hwfault() override;
    std::int32_t boardsel(std::uint8_t code) override;
    void boardsel2(std::uint8_t first, std::uint8_t second) override;

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
