// A chip on the bench beside the programmer: signals clock it, and its outputs are signals too.
#pragma once

#include "sim/part.h"
#include "sim/signals/signal.h"

#include <string>
#include <vector>

namespace tamrix::sim {

/// Where a pin of the chip is connected.
struct chip_wire {
    enum class end : std::uint8_t { input, high, low, pin };
    int pin;  // of the chip, from 0
    end to;
    int index = 0;  // `input`: the bit, 0 is P21; `pin`: another pin of the chip, from 0
};

/// What is needed to build one; each that is built starts as after switching on.
struct chip_plan {
    part_source make;
    std::vector<chip_wire> wires{};
};

class clocked_chip {
public:
    explicit clocked_chip(const chip_plan& plan);

    /// Its registers get their first state again, now that its inputs have levels.
    void power_up() { part_->power_up(); }
    /// Works with the levels at the inputs, where what nothing drives counts as high. Call it again until the result of
    /// drives() no longer changes the levels.
    void settle(pin_levels inputs);
    /// What the chip does at the inputs of the programmer.
    pin_levels drives() const;

private:
    struct node {
        int input = -1;  // bit; -1: none
        level fixed = level::open;
        std::size_t of = 0;  // the first pin of those that are connected with each other
    };
    level level_at(std::size_t first, pin_levels inputs) const;

    std::unique_ptr<part> part_;
    std::vector<node> nodes_;  // by pin
    std::vector<level> seen_, drives_;
};

}  // namespace tamrix::sim
