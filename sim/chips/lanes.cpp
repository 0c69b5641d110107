#include "chips/lanes.h"

#include <algorithm>

namespace tamrix::sim {

namespace {
constexpr int most_rounds = 200;
}

lanes::lanes(std::shared_ptr<const circuit> plan) : plan_{std::move(plan)}
{
    nodes_.resize(plan_->pins.size());
    values_.resize(plan_->gates.size());
    states_.resize(plan_->registers.size());
    next_.resize(plan_->registers.size());
    std::size_t clauses = 0;
    for (const auto& moved : plan_->registers) clauses += moved.clauses.size();
    before_.resize(clauses);
}

void lanes::power_up(std::span<const word> registers)
{
    std::ranges::fill(states_, 0);
    std::ranges::copy(registers.first(std::min(registers.size(), states_.size())), states_.begin());
    fresh_ = true;
}

void lanes::settle()
{
    evaluate();
    for (int round = 0; round < most_rounds && move_registers(); ++round) evaluate();
}

void lanes::stick(gate_id gate, word where, bool high)
{
    const auto place = std::ranges::lower_bound(stuck_, gate, {}, &stuck_gate::id);
    const auto at = place != stuck_.end() && place->id == gate ? place : stuck_.insert(place, {gate, 0, 0});
    (high ? at->high : at->low) |= where;
}

void lanes::evaluate()
{
    gate_id from = 0;
    for (const auto& at : stuck_) {
        evaluate(from, at.id + 1);
        values_[at.id] = (values_[at.id] & ~at.low) | at.high;
        from = at.id + 1;
    }
    evaluate(from, static_cast<gate_id>(values_.size()));
}

void lanes::evaluate(gate_id from, gate_id end)
{
    auto* to = values_.data() + from;
    for (auto id = from; id < end; ++id) {
        const auto& at = plan_->gates[id];
        switch (at.kind) {
        case gate_kind::constant_0: *to = 0; break;
        case gate_kind::constant_1: *to = all_lanes; break;
        case gate_kind::pin: *to = nodes_[at.a]; break;
        case gate_kind::reg: *to = states_[at.a]; break;
        case gate_kind::invert: *to = ~values_[at.a]; break;
        case gate_kind::both: *to = values_[at.a] & values_[at.b]; break;
        case gate_kind::either: *to = values_[at.a] | values_[at.b]; break;
        case gate_kind::differ: *to = values_[at.a] ^ values_[at.b]; break;
        }
        ++to;
    }
}

/// All registers move at once, from what they read before any of them moved.
bool lanes::move_registers()
{
    std::size_t at = 0;
    for (std::size_t i = 0; i < states_.size(); ++i) {
        word taken = 0, next = states_[i];
        for (const auto& how : plan_->registers[i].clauses) {
            const auto condition = values_[how.condition];
            auto acts = condition;
            if (how.when != trigger::hold) {
                const auto before = fresh_ ? condition : before_[at];
                acts = how.when == trigger::rise ? condition & ~before : before & ~condition;
            }
            before_[at++] = condition;
            acts &= ~taken;
            next = (next & ~acts) | (values_[how.data] & acts);
            taken |= acts;
        }
        next_[i] = next;
    }
    fresh_ = false;
    const bool moved = next_ != states_;
    states_.swap(next_);
    return moved;
}

}  // namespace tamrix::sim
