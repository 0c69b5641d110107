// Small hand-written parts for the simulated socket.
#pragma once

#include "sim/part.h"

#include <cstddef>

namespace tamrix::tests {

/// Four NAND gates in 14 pins: 1A 1B 1Y 2A 2B 2Y GND 3Y 3A 3B 4Y 4A 4B VCC.
class quad_nand final : public sim::part {
public:
    int pins() const override { return 14; }
    int vcc_pin() const override { return 13; }
    int gnd_pin() const override { return 6; }
    void power_up() override { ++power_ups; }
    void settle(std::span<const sim::level> nodes, std::span<sim::level> drives) override
    {
        const std::size_t gates[][3] = {{0, 1, 2}, {3, 4, 5}, {8, 9, 7}, {11, 12, 10}};
        for (const auto& [a, b, y] : gates) {
            const bool both = nodes[a] == sim::level::high && nodes[b] == sim::level::high;
            drives[y] = both ? sim::level::low : sim::level::high;
        }
    }

    int power_ups = 0;
};

/// Each pin of the left column drives the one opposite. Needs no supply.
class one_way_wires final : public sim::part {
public:
    explicit one_way_wires(int pins) : pins_{pins} {}
    int pins() const override { return pins_; }
    int vcc_pin() const override { return -1; }
    int gnd_pin() const override { return -1; }
    void power_up() override {}
    void settle(std::span<const sim::level> nodes, std::span<sim::level> drives) override
    {
        for (std::size_t pin = 0; pin < nodes.size() / 2; ++pin) drives[nodes.size() - 1 - pin] = nodes[pin];
    }

private:
    int pins_;
};

/// An inverter whose output is at the pin opposite; with its supply in the usual corners of any package.
class inverter final : public sim::part {
public:
    explicit inverter(int pins) : pins_{pins} {}
    int pins() const override { return pins_; }
    int vcc_pin() const override { return pins_ - 1; }
    int gnd_pin() const override { return pins_ / 2 - 1; }
    void power_up() override { ++power_ups; }
    void settle(std::span<const sim::level> nodes, std::span<sim::level> drives) override
    {
        drives[nodes.size() - 2] = nodes[1] == sim::level::high ? sim::level::low : sim::level::high;
    }

    int power_ups = 0;

private:
    int pins_;
};

/// Counts the rising edges of pin 1 and shows the lowest bit of the count at pin 2; 0 when it gets its supply.
class toggle final : public sim::part {
public:
    int pins() const override { return 8; }
    int vcc_pin() const override { return 7; }
    int gnd_pin() const override { return 3; }
    void power_up() override { state_ = false, known_ = false; }
    void settle(std::span<const sim::level> nodes, std::span<sim::level> drives) override
    {
        const bool now = nodes[0] == sim::level::high;
        if (known_ && now && !clock_) state_ = !state_;
        clock_ = now;
        known_ = true;
        drives[1] = state_ ? sim::level::high : sim::level::low;
    }

private:
    bool state_ = false, clock_ = false, known_ = false;
};

/// Pin 2 is pin 1 turned round, and both are one wire.
class oscillator final : public sim::part {
public:
    int pins() const override { return 8; }
    int vcc_pin() const override { return -1; }
    int gnd_pin() const override { return -1; }
    void power_up() override {}
    void settle(std::span<const sim::level> nodes, std::span<sim::level> drives) override
    {
        drives[1] = nodes[0] == sim::level::high ? sim::level::low : sim::level::high;
    }
    std::span<const std::pair<int, int>> links() const override { return {&link_, 1}; }

private:
    std::pair<int, int> link_{0, 1};
};

}  // namespace tamrix::tests
