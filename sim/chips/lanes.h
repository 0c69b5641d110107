// Plays a circuit 64 times at once: bit `n` of every word belongs to lane `n`.
#pragma once

#include "chips/circuit.h"

#include <memory>
#include <span>

namespace tamrix::sim {

using word = std::uint64_t;
constexpr word all_lanes = ~word{0};

class lanes {
public:
    explicit lanes(std::shared_ptr<const circuit> plan);

    const circuit& plan() const { return *plan_; }
    /// Sets the registers, one word each; a missing one is 0. No edge occurs in the next settle.
    void power_up(std::span<const word> registers);
    void set_node(std::size_t pin, word level) { nodes_[pin] = level; }
    word node(std::size_t pin) const { return nodes_[pin]; }
    /// Brings gates and registers to rest. What never rests is left as it is after some hundred rounds.
    void settle();

    /// From now on the gate is at this level in these lanes.
    void stick(gate_id gate, word lanes, bool high);

    word gate(gate_id id) const { return values_[id]; }
    word state(std::size_t reg) const { return states_[reg]; }
    /// What the chip does at a pin: whether it drives it, and to which level.
    word driven(std::size_t pin) const { return drives(pin) ? values_[plan_->pins[pin].enable] : 0; }
    word level(std::size_t pin) const { return values_[plan_->pins[pin].value]; }

private:
    bool drives(std::size_t pin) const
    {
        return plan_->pins[pin].role == pin_role::output || plan_->pins[pin].role == pin_role::both;
    }
    void evaluate();
    void evaluate(gate_id from, gate_id to);
    bool move_registers();

    std::shared_ptr<const circuit> plan_;
    std::vector<word> nodes_, values_, states_, next_, before_;  // before_: each clock at the last round
    bool fresh_ = true;
    struct stuck_gate {
        gate_id id;
        word low, high;
    };
    std::vector<stuck_gate> stuck_;  // by gate
};

}  // namespace tamrix::sim
