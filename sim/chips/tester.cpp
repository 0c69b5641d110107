#include "chips/tester.h"

#include <algorithm>

namespace tamrix::sim {

namespace {
constexpr int most_rounds = 32;
}

tester::tester(std::shared_ptr<const circuit> plan, std::vector<order_lanes> orders, std::uint64_t seed)
    : chip_{std::move(plan)}, orders_{std::move(orders)}, seed_{seed}
{
    const auto& pins = chip_.plan().pins;
    for (auto* each : {&value_, &driven_, &levels_, &stuck_low_, &stuck_high_}) each->resize(pins.size());
    met_.resize(chip_.plan().cautions.size());
    order_matters_ = !met_.empty() || !chip_.plan().registers.empty() ||
                     std::ranges::any_of(pins, [](const pin& at) { return at.role == pin_role::both; });
}

void tester::power_up(std::span<const word> registers, std::span<const word> levels)
{
    chip_.power_up(registers);
    for (std::size_t pin = 0; pin < value_.size(); ++pin) {
        value_[pin] = levels[pin];
        driven_[pin] = plan().pins[pin].role == pin_role::input ? all_lanes : 0;
    }
    rest();
    fought_ = false;
}

std::size_t tester::group(std::size_t pin) const
{
    const auto half = value_.size() / 2;
    return (pin < half ? half - 1 - pin : pin - half) / 4;
}

void tester::apply(const row_acts& row)
{
    ++rows_;
    fought_ = false;
    for (std::size_t i = 0; i < met_.size(); ++i) met_[i] = chip_.gate(plan().cautions[i].condition);
    std::vector<change> changes;
    for (std::size_t pin = 0; pin < row.size(); ++pin)
        changes.push_back({pin, row[pin] == act::high ? all_lanes : 0, row[pin] == act::release ? 0 : all_lanes});
    make(changes);
    for (const auto level : {all_lanes, word{0}}) {
        changes.clear();
        for (std::size_t pin = 0; pin < row.size(); ++pin)
            if (row[pin] == act::pulse) changes.push_back({pin, level, all_lanes});
        make(changes);
    }
}

void tester::make(std::vector<change>& changes)
{
    std::erase_if(changes, [this](const change& at) {
        return driven_[at.pin] == at.driven && ((value_[at.pin] ^ at.value) & at.driven) == 0;
    });
    if (changes.empty()) return;
    if (changes.size() > 1 && order_matters_) return make_in_order(changes);
    for (const auto& at : changes) take(at, all_lanes);
    rest();
}

std::size_t tester::place_in_order(order how, const std::vector<change>& changes, std::size_t which, std::size_t salt) const
{
    const auto pin = changes[which].pin;
    switch (how) {
    case order::ports_upward: return group(pin);
    case order::ports_downward: return 5 - group(pin);
    case order::pins_upward: return which;
    case order::pins_downward: return changes.size() - 1 - which;
    case order::at_once: return 0;
    case order::shuffled: break;
    }
    const auto key = [&](std::size_t other) { return mix(seed_ ^ (rows_ << 20) ^ (salt << 10) ^ changes[other].pin); };
    const auto own = key(which);
    std::size_t place = 0;
    for (std::size_t other = 0; other < changes.size(); ++other) place += key(other) < own ? 1 : 0;
    return place;
}

void tester::make_in_order(const std::vector<change>& changes)
{
    const auto steps = std::max<std::size_t>(changes.size(), 6);
    std::vector<word> when(steps * changes.size());  // the lanes in which a change belongs to a step
    for (std::size_t salt = 0; salt < orders_.size(); ++salt)
        for (std::size_t which = 0; which < changes.size(); ++which)
            when[place_in_order(orders_[salt].how, changes, which, salt) * changes.size() + which] |= orders_[salt].lanes;
    for (std::size_t step = 0; step < steps; ++step) {
        bool any = false;
        for (std::size_t which = 0; which < changes.size(); ++which) {
            const auto where = when[step * changes.size() + which];
            if (where == 0) continue;
            take(changes[which], where);
            any = true;
        }
        if (any) rest();
    }
}

void tester::take(const change& what, word where)
{
    value_[what.pin] = (value_[what.pin] & ~where) | (what.value & where);
    driven_[what.pin] = (driven_[what.pin] & ~where) | (what.driven & where);
}

/// Pins and chip, until neither moves the other.
void tester::rest()
{
    for (int round = 0; round < most_rounds; ++round) {
        for (std::size_t pin = 0; pin < value_.size(); ++pin)
            chip_.set_node(pin, (levels_[pin] & ~stuck_low_[pin]) | stuck_high_[pin]);
        if (round > 0) chip_.settle();
        bool moved = round == 0;
        for (std::size_t pin = 0; pin < value_.size(); ++pin) {
            const auto chip = chip_.driven(pin);
            auto own = (chip & chip_.level(pin)) | ~chip;
            own = (own & ~stuck_low_[pin]) | stuck_high_[pin];
            const auto level = (value_[pin] & driven_[pin]) | (own & ~driven_[pin]);
            moved = moved || level != levels_[pin];
            levels_[pin] = level;
        }
        if (!moved) break;
    }
    for (std::size_t pin = 0; pin < value_.size(); ++pin) fought_ = fought_ || (chip_.driven(pin) & driven_[pin]) != 0;
    for (std::size_t i = 0; i < met_.size(); ++i) met_[i] |= chip_.gate(plan().cautions[i].condition);
}

}  // namespace tamrix::sim
