// The board that the output test needs in the socket: it connects each pin to the opposite one.
#pragma once

#include "sim/part.h"

#include <vector>

namespace tamrix::sim {

class test_board final : public part {
public:
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
