#include "sim/signals/clocked_chip.h"

#include <algorithm>

namespace tamrix::sim {

namespace {

/// Outputs may be wired to inputs of the same chip.
constexpr int most_rounds = 64;

}  // namespace

clocked_chip::clocked_chip(const chip_plan& plan)
    : part_{plan.make()},
      nodes_(static_cast<std::size_t>(part_->pins())),
      seen_(nodes_.size(), level::high),
      drives_(nodes_.size(), level::open)
{
    for (std::size_t pin = 0; pin < nodes_.size(); ++pin) nodes_[pin].of = pin;
    if (part_->vcc_pin() >= 0) nodes_[static_cast<std::size_t>(part_->vcc_pin())].fixed = level::high;
    if (part_->gnd_pin() >= 0) nodes_[static_cast<std::size_t>(part_->gnd_pin())].fixed = level::low;
    for (const chip_wire& wire : plan.wires) {
        node& here = nodes_[static_cast<std::size_t>(wire.pin)];
        switch (wire.to) {
        case chip_wire::end::input: here.input = wire.index; break;
        case chip_wire::end::high: here.fixed = level::high; break;
        case chip_wire::end::low: here.fixed = level::low; break;
        case chip_wire::end::pin: {
            const std::size_t joined = nodes_[static_cast<std::size_t>(wire.index)].of, before = here.of;
            for (node& one : nodes_) one.of = one.of == before ? joined : one.of;
        }
        }
    }
    part_->power_up();
}

/// Of all pins that are connected with this one: a low beats a high, and nothing at all is high.
level clocked_chip::level_at(std::size_t first, pin_levels inputs) const
{
    for (std::size_t pin = 0; pin < nodes_.size(); ++pin) {
        const node& here = nodes_[pin];
        if (here.of != first) continue;
        const bool low_input = here.input >= 0 && (inputs.driven & ~inputs.high & 1u << here.input) != 0;
        if (low_input || here.fixed == level::low || drives_[pin] == level::low) return level::low;
    }
    return level::high;
}

void clocked_chip::settle(pin_levels inputs)
{
    std::vector<level> drives(nodes_.size());
    for (int round = 0; round < most_rounds; ++round) {
        for (std::size_t pin = 0; pin < nodes_.size(); ++pin) seen_[pin] = level_at(nodes_[pin].of, inputs);
        std::ranges::fill(drives, level::open);
        part_->settle(seen_, drives);
        if (drives == drives_) return;
        std::swap(drives, drives_);
    }
}

pin_levels clocked_chip::drives() const
{
    unsigned low = 0, high = 0;
    for (std::size_t pin = 0; pin < nodes_.size(); ++pin) {
        if (nodes_[pin].input < 0 || drives_[pin] == level::open) continue;
        (drives_[pin] == level::low ? low : high) |= 1u << nodes_[pin].input;
    }
    return {static_cast<std::uint8_t>(low | high), static_cast<std::uint8_t>(high & ~low)};
}

}  // namespace tamrix::sim
