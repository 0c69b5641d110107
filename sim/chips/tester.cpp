#include "chips/tester.h"

#include <algorithm>

namespace tamrix::sim {

namespace {
constexpr int most_rounds = 32;
}

tester::tester(std::shared_ptr<const circuit> plan, std::vector<order_lanes> orders, std::uint64_t random_start)
    : chip_{std::move(plan)}, orders_{std::move(orders)}, random_start_{random_start}
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

/// For every change the step in which it is made.
std::vector<std::size_t> tester::steps_of(order how, const std::vector<change>& changes, std::size_t salt) const
{
    std::vector<std::size_t> steps(changes.size());
    std::vector<std::uint64_t> keys;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const auto pin = changes[i].pin;
        switch (how) {
        case order::ports_upward: steps[i] = group(pin); break;
        case order::ports_downward: steps[i] = 5 - group(pin); break;
        case order::pins_upward: steps[i] = i; break;
        case order::pins_downward: steps[i] = changes.size() - 1 - i; break;
        case order::at_once: break;
        case order::shuffled: keys.push_back(mix(random_start_ ^ (rows_ << 20) ^ (salt << 10) ^ pin)); break;
        }
    }
    for (std::size_t i = 0; i < keys.size(); ++i)
        for (const auto key : keys) steps[i] += key < keys[i] ? 1 : 0;
    return steps;
}

void tester::make_in_order(const std::vector<change>& changes)
{
    const auto steps = std::max<std::size_t>(changes.size(), 6);
    std::vector<word> when(steps * changes.size());  // the lanes in which a change belongs to a step
    for (std::size_t salt = 0; salt < orders_.size(); ++salt) {
        const auto own = steps_of(orders_[salt].how, changes, salt);
        for (std::size_t i = 0; i < changes.size(); ++i) when[own[i] * changes.size() + i] |= orders_[salt].lanes;
    }
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
