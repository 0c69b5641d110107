#include "chips/redundancy.h"

#include <algorithm>
#include <array>

namespace tamrix::sim {
namespace {

constexpr std::size_t most_inputs = 20;

/// Sets 64 of all combinations of the inputs; `number` counts the blocks of 64.
void set_inputs(lanes& chip, const std::vector<std::size_t>& inputs, std::size_t number)
{
    constexpr std::array<word, 6> fast{0xAAAAAAAAAAAAAAAA, 0xCCCCCCCCCCCCCCCC, 0xF0F0F0F0F0F0F0F0,
                                       0xFF00FF00FF00FF00, 0xFFFF0000FFFF0000, 0xFFFFFFFF00000000};
    for (std::size_t i = 0; i < inputs.size(); ++i)
        chip.set_node(inputs[i], i < fast.size() ? fast[i] : (number >> (i - fast.size()) & 1) != 0 ? all_lanes : 0);
}

word shown(const lanes& chip, std::size_t pin)
{
    const auto driven = chip.driven(pin);
    return (chip.level(pin) & driven) | ~driven;
}

bool can_be_shown(const circuit& plan, const stuck_fault& fault, const std::vector<std::size_t>& inputs)
{
    const auto shared = std::make_shared<const circuit>(plan);
    lanes good{shared}, bad{shared};
    const auto stuck = fault.high ? all_lanes : word{0};
    for (std::size_t number = 0; number < std::size_t{1} << std::max<std::size_t>(inputs.size(), 6) >> 6; ++number) {
        set_inputs(good, inputs, number);
        set_inputs(bad, inputs, number);
        bad.set_node(fault.pin, stuck);
        good.settle();
        bad.settle();
        for (std::size_t pin = 0; pin < plan.pins.size(); ++pin)
            if (plan.pins[pin].role == pin_role::output &&
                shown(good, pin) != (pin == fault.pin ? stuck : shown(bad, pin)))
                return true;
    }
    return false;
}

}  // namespace

std::string why_missed(const circuit& plan, const stuck_fault& fault, std::size_t most_rows)
{
    std::vector<std::size_t> inputs;
    bool bus = false;
    for (std::size_t pin = 0; pin < plan.pins.size(); ++pin) {
        if (plan.pins[pin].role == pin_role::input) inputs.push_back(pin);
        bus = bus || plan.pins[pin].role == pin_role::both;
    }
    if (plan.registers.empty() && !bus && inputs.size() <= most_inputs && !can_be_shown(plan, fault, inputs))
        return "no input shows it: all of them were tried";
    return "not shown within " + std::to_string(most_rows) + " rows";
}

}  // namespace tamrix::sim
