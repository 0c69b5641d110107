// A walk through the time of all signals together. Chips among them keep their state on the way.
#pragma once

#include "sim/signals/clocked_chip.h"

#include <memory>
#include <vector>

namespace tamrix::sim {

/// Two signals at one pin: low beats high.
pin_levels both(pin_levels one, pin_levels other);

class signal_walk {
public:
    signal_walk() = default;
    signal_walk(std::vector<std::shared_ptr<const signal>> sources, const std::vector<chip_plan>& chips);

    /// `when` is 0 or later, and not before that of the call before. Chips see every change on the way from 0 on, but
    /// of one very long step only the first few 100 000.
    glimpse look(nanoseconds when);

    /// When something may change after the last look.
    nanoseconds next_change() const { return now_.until; }

private:
    struct source {
        std::shared_ptr<const signal> what;
        glimpse seen;
    };
    glimpse levels_of_sources(nanoseconds when);
    void settle_chips();
    void step(nanoseconds when);

    std::vector<source> sources_;
    std::vector<clocked_chip> chips_;
    pin_levels driven_by_sources_{};
    glimpse now_{{}, nanoseconds{0}};
};

}  // namespace tamrix::sim
