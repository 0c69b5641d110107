#include "chips/row_source.h"

#include <algorithm>
#include <map>

namespace tamrix::sim {

row_source::row_source(const circuit& plan)
{
    std::map<gate_id, std::vector<std::size_t>> buses;
    for (std::size_t i = 0; i < plan.pins.size(); ++i) {
        const auto& at = plan.pins[i];
        roles_.push_back({at.role == pin_role::input, at.clock, at.pulse_only});
        if (at.role == pin_role::both) buses[at.enable].push_back(i);
        if (at.role == pin_role::input && at.clock) clocks_.push_back(i);
        if (at.role == pin_role::input && !at.pulse_only) inputs_.push_back(i);
    }
    for (const auto& at : plan.cautions) kept_.insert(kept_.end(), at.pins.begin(), at.pins.end());
    for (auto& [enable, pins] : buses) buses_.push_back(std::move(pins));
}

act row_source::any_level(std::size_t pin, random_source& random) const
{
    if (roles_[pin].pulse_only) return act::low;
    return random.percent(50) ? act::high : act::low;
}

/// A pulse of the row before leaves its pin low.
void row_source::settle_clocks(row_acts& row) const
{
    for (const auto pin : clocks_)
        if (row[pin] == act::pulse) row[pin] = act::low;
}

void row_source::pulse_some(row_acts& row, random_source& random) const
{
    if (clocks_.empty() || !random.percent(70)) return;
    row[clocks_[random.below(clocks_.size())]] = act::pulse;
    if (clocks_.size() > 1 && random.percent(25)) row[clocks_[random.below(clocks_.size())]] = act::pulse;
}

void row_source::turn_bus(row_acts& row, random_source& random) const
{
    for (const auto& bus : buses_) {
        const auto chance = random.below(100);
        for (const auto pin : bus) {
            if (chance < 25)
                row[pin] = act::release;
            else if (chance < 50 || (chance < 75 && row[pin] != act::release))
                row[pin] = any_level(pin, random);
        }
    }
}

row_acts row_source::fresh(random_source& random) const
{
    auto row = nothing();
    for (std::size_t pin = 0; pin < row.size(); ++pin)
        if (roles_[pin].driven) row[pin] = any_level(pin, random);
    pulse_some(row, random);
    return row;
}

row_acts row_source::step(const row_acts& before, random_source& random) const
{
    return kept_.empty() || random.percent(20) ? free_step(before, random) : careful_step(before, random);
}

/// Three kinds of rows by turns: the clocks go high and stay; pins that may change then do, and nothing else; the rest.
row_acts row_source::careful_step(const row_acts& before, random_source& random) const
{
    auto row = before;
    const auto kind = random.below(3);
    if (kind == 0)
        for (const auto pin : clocks_) row[pin] = roles_[pin].pulse_only ? act::low : act::high;
    if (kind == 1) {
        const auto changes = 1 + random.below(3);
        for (std::size_t i = 0; i < changes; ++i) row[kept_[random.below(kept_.size())]] = any_level(kept_[0], random);
    }
    if (kind == 2) {
        row = free_step(before, random);
        for (const auto pin : kept_) row[pin] = before[pin];
    }
    return row;
}

row_acts row_source::free_step(const row_acts& before, random_source& random) const
{
    auto row = before;
    settle_clocks(row);
    if (random.percent(10)) {
        row = fresh(random);
        for (const auto& bus : buses_)
            for (const auto pin : bus) row[pin] = before[pin];
        return row;
    }
    if (random.percent(60)) turn_bus(row, random);
    const auto most = random.percent(50) ? 2 : random.percent(50) ? 4 : inputs_.size() + 1;
    const auto changes = random.below(most + 1);
    for (std::size_t i = 0; i < changes && !inputs_.empty(); ++i) {
        const auto pin = inputs_[random.below(inputs_.size())];
        row[pin] = row[pin] == act::high ? act::low : act::high;
    }
    pulse_some(row, random);
    return row;
}

row_acts row_source::again(const row_acts& before, random_source& random) const
{
    auto row = before;
    if (clocks_.empty()) return step(before, random);
    if (std::ranges::none_of(clocks_, [&](std::size_t pin) { return row[pin] == act::pulse; }))
        row[clocks_[random.below(clocks_.size())]] = act::pulse;
    return row;
}

}  // namespace tamrix::sim
