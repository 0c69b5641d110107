#include "sim/signals/signal_walk.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

/// Chips whose outputs are inputs of each other come to rest soon.
constexpr int most_rounds = 64;
constexpr int most_changes = 300'000;

}  // namespace

pin_levels both(pin_levels one, pin_levels other)
{
    const unsigned low = (one.driven & ~one.high) | (other.driven & ~other.high);
    const unsigned driven = one.driven | other.driven;
    return {static_cast<std::uint8_t>(driven), static_cast<std::uint8_t>(driven & ~low)};
}

signal_walk::signal_walk(std::vector<std::shared_ptr<const signal>> sources, const std::vector<chip_plan>& chips)
{
    for (auto& one : sources) sources_.push_back({std::move(one), {{}, nanoseconds{0}}});
    for (const chip_plan& plan : chips) chips_.emplace_back(plan);
}

glimpse signal_walk::levels_of_sources(nanoseconds when)
{
    glimpse all;
    for (source& one : sources_) {
        if (when >= one.seen.until) one.seen = one.what->look(when);
        all.levels = both(all.levels, one.seen.levels);
        all.until = std::min(all.until, one.seen.until);
    }
    return all;
}

void signal_walk::settle_chips()
{
    for (int round = 0; round < most_rounds; ++round) {
        const pin_levels before = now_.levels;
        for (clocked_chip& chip : chips_) chip.settle(now_.levels);
        now_.levels = driven_by_sources_;
        for (const clocked_chip& chip : chips_) now_.levels = both(now_.levels, chip.drives());
        if (now_.levels == before) return;
    }
}

void signal_walk::step(nanoseconds when)
{
    const glimpse seen = levels_of_sources(when);
    now_.until = seen.until;
    if (chips_.empty()) {
        now_.levels = seen.levels;
        return;
    }
    driven_by_sources_ = seen.levels;
    now_.levels = seen.levels;
    for (const clocked_chip& chip : chips_) now_.levels = both(now_.levels, chip.drives());
    settle_chips();
    if (when.count() > 0) return;
    // What came to rest just now was no edge.
    for (clocked_chip& chip : chips_) chip.power_up();
    settle_chips();
}

glimpse signal_walk::look(nanoseconds when)
{
    if (!chips_.empty()) {
        for (int changes = 0; changes < most_changes && now_.until <= when; ++changes) step(now_.until);
    }
    if (when >= now_.until) step(when);
    return now_;
}

}  // namespace tamrix::sim
