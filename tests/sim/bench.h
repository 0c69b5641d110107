// A simulated programmer on a test's bench, and the bytes that rows of letters become, worked out letter by letter.
#pragma once

#include "sim/programmer.h"
#include "support/sim_parts.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace tamrix::tests {

using ports = std::array<std::uint8_t, 6>;

/// The place of a letter of a row in the ports.
struct port_bit {
    std::size_t port;
    int bit;
    bool operator==(const port_bit&) const = default;
};
port_bit place_of(std::size_t index, std::size_t half);
/// The row as the 40 letters of a socket of 40 contacts.
std::string socket40_text(const std::string& row);

struct bench {
    explicit bench(int model = 40, int banks = 0, int generation = 0);

    int model;
    std::shared_ptr<sim::virtual_clock> time = std::make_shared<sim::virtual_clock>();
    std::shared_ptr<sim::journal> log = std::make_shared<sim::journal>(time);
    std::array<std::uint8_t, 20> ibuf1{}, ubuf1{};
    std::int16_t usbpip0readresult = 0;
    sim::programmer programmer;
    hw::devobj& device = programmer.device();
    hw::lumbat& usb = programmer.transport();

    sim::wiring wires() const { return sim::wiring{model}; }
    bool forty() const { return model == 22 || model == 23 || model == 24 || model == 28 || model == 29; }
    std::int32_t frame(std::vector<std::uint8_t> bytes);
    void power(int gnd_code, int vcc_code, int state);
    /// Drives 1 and 0, releases all other pins; by one frame, or register by register. A 1 of a socket of 40 is
    /// released.
    void drive(const std::string& row, bool by_frame = true);
    /// H and L at each pin of a part of so many pins, read by the way that was driven.
    std::string read(std::size_t pins, bool by_frame = true);
    /// The drive and the answer, as the letters at the pins then.
    std::string run(const std::string& row, bool by_frame = true);
    std::vector<std::string> hazards() const;
    std::vector<std::string> notes() const;

private:
    std::vector<port_bit> places(std::size_t pins) const;
    ports read_ports(bool by_frame);
};

}  // namespace tamrix::tests
