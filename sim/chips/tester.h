// A tester with a chip in its socket, 64 times at once: lanes differ in the order in which their inputs change, in the
// state of the chip at power up, or in a fault of one pin.
#pragma once

#include "chips/lanes.h"
#include "chips/random.h"

namespace tamrix::sim {

/// What the tester does at a pin in one row. `pulse`: low, and at the end of the row high and low again.
enum class act : std::uint8_t { release, low, high, pulse };
using row_acts = std::vector<act>;  // one for every pin of the chip

/// In what order the pins of a row change. The ports are groups of four pins of the left and four of the right side.
enum class order : std::uint8_t { ports_upward, ports_downward, pins_upward, pins_downward, at_once, shuffled };

struct order_lanes {
    order how = order::at_once;
    word lanes = all_lanes;
};

class tester {
public:
    tester(std::shared_ptr<const circuit> plan, std::vector<order_lanes> orders, std::uint64_t random_start);

    const circuit& plan() const { return chip_.plan(); }
    /// Switches the supply on while the pins are at `levels`, one word a pin.
    void power_up(std::span<const word> registers, std::span<const word> levels);
    void apply(const row_acts& row);

    /// The level that the tester reads. A released pin that nothing drives is pulled up.
    word node(std::size_t pin) const { return levels_[pin]; }
    const lanes& chip() const { return chip_; }
    /// True if tester and chip both drove a pin at some moment of the last row, in any lane.
    bool fought() const { return fought_; }
    /// The lanes in which the condition of a caution was 1 at some moment from the end of the row before on.
    word met(std::size_t caution) const { return met_[caution]; }

    /// From now on, on the chip's side, the pin is stuck in these lanes.
    void stick(std::size_t pin, word lanes, bool high) { (high ? stuck_high_ : stuck_low_)[pin] |= lanes; }
    void stick_gate(gate_id gate, word lanes, bool high) { chip_.stick(gate, lanes, high); }

private:
    struct change {
        std::size_t pin;
        word value, driven;
    };
    void make(std::vector<change>& changes);
    void make_in_order(const std::vector<change>& changes);
    std::vector<std::size_t> steps_of(order how, const std::vector<change>& changes, std::size_t salt) const;
    std::size_t group(std::size_t pin) const;
    void take(const change& what, word where);
    void rest();

    lanes chip_;
    std::vector<order_lanes> orders_;
    std::vector<word> value_, driven_, levels_, stuck_low_, stuck_high_, met_;
    std::uint64_t random_start_, rows_ = 0;
    bool fought_ = false;
    bool order_matters_;
};

}  // namespace tamrix::sim
