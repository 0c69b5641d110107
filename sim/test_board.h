// The board that the output test needs in the socket: it connects each line to the opposite one.
#pragma once

#include "sim/part.h"
#include "sim/wiring.h"

#include <vector>

namespace tamrix::sim {

class test_board final : public part {
public:
    /// For a socket: joins the lines of bits b and 7 - b of each port. On 48 contacts these pins face each other; on
    /// 40, which are wired in another order, not all do.
    explicit test_board(const wiring& wires) : pins_{wires.contacts()}
    {
        for (int port = 0; port < 6; ++port) {
            for (int bit = 0; bit < 4; ++bit) {
                const auto one = wires.contact_of_bit(port, bit), other = wires.contact_of_bit(port, 7 - bit);
                if (one && other) links_.emplace_back(*wires.pin_at(*one, pins_), *wires.pin_at(*other, pins_));
            }
        }
    }
    /// Joins each pin with the one that it faces.
    explicit test_board(int pins) : pins_{pins}
    {
        for (int pin = 0; pin < pins / 2; ++pin) links_.emplace_back(pin, pins - 1 - pin);
    }

    int pins() const override { return pins_; }
    int vcc_pin() const override { return -1; }
    int gnd_pin() const override { return -1; }
    void power_up() override {}
    void settle(std::span<const level>, std::span<level>) override {}
    std::span<const std::pair<int, int>> links() const override { return links_; }
    /// Bare copper: any voltage.
    std::int32_t highest_millivolts(int) const override { return 30000; }

private:
    int pins_;
    std::vector<std::pair<int, int>> links_;
};

}  // namespace tamrix::sim
