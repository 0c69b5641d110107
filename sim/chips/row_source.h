// Proposes the next rows of a tester.
#pragma once

#include "chips/vector_run.h"

namespace tamrix::sim {

/// The chip's pins as a tester handles them.
class row_source {
public:
    explicit row_source(const circuit& plan);

    row_acts nothing() const { return row_acts(roles_.size(), act::release); }
    /// Everything at random, pins of `both` released.
    row_acts fresh(random_source& random) const;
    /// The row before with a few inputs changed, and mostly a clock pulsed.
    row_acts step(const row_acts& before, random_source& random) const;
    /// The row before once more, with the same pulse; the first one is chosen at random.
    row_acts again(const row_acts& before, random_source& random) const;

private:
    act any_level(std::size_t pin, random_source& random) const;
    row_acts careful_step(const row_acts& before, random_source& random) const;
    row_acts free_step(const row_acts& before, random_source& random) const;
    void settle_clocks(row_acts& row) const;
    void pulse_some(row_acts& row, random_source& random) const;
    void turn_bus(row_acts& row, random_source& random) const;

    struct handling {
        bool driven = false, clock = false, pulse_only = false;
    };
    std::vector<handling> roles_;
    std::vector<std::size_t> inputs_, clocks_, kept_;  // kept_: change at certain times only
    std::vector<std::vector<std::size_t>> buses_;      // pins of `both` that turn together
};

}  // namespace tamrix::sim
