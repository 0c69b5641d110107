// Reads a signal as an instrument on the bench does: its levels at times, and where they change.
#pragma once

#include "sim/signals/signal_set.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix::tests {

inline sim::signal_set signals_of(const std::vector<std::string>& lines, sim::part_shelf chips = {})
{
    sim::signal_set set{std::move(chips)};
    for (const std::string& line : lines) set.add(line);
    return set;
}

/// What is refused, as text; "taken" if nothing is.
inline std::string refusal_of_signal(std::string_view text, sim::part_shelf chips = {})
{
    sim::signal_set set{std::move(chips)};
    try {
        set.add(text);
    } catch (const sim::signal_error& error) {
        EXPECT_TRUE(set.empty()) << text;
        return error.what();
    }
    return "taken";
}

/// Pin 21 is bit 0. 'H' and 'L', '-' where nothing drives, at each of the times.
inline std::string levels_at(const sim::signal_set& set, int pin, const std::vector<std::int64_t>& nanoseconds)
{
    auto walk = set.walk();
    std::string letters;
    for (const std::int64_t when : nanoseconds) {
        const auto levels = walk.look(sim::nanoseconds{when}).levels;
        const int bit = pin - 21;
        letters += (levels.driven >> bit & 1) == 0 ? '-' : (levels.high >> bit & 1) != 0 ? 'H' : 'L';
    }
    return letters;
}

struct edge {
    std::int64_t nanoseconds;
    int pin;
    bool high;
    bool operator==(const edge&) const = default;
};

/// All edges after time 0 and before `until`, found by going from change to change.
inline std::vector<edge> edges_of(const sim::signal_set& set, std::int64_t until)
{
    auto walk = set.walk();
    std::vector<edge> edges;
    sim::glimpse seen = walk.look(sim::nanoseconds{0});
    while (seen.until.count() < until) {
        const auto when = seen.until;
        const sim::glimpse next = walk.look(when);
        for (int bit = 0; bit < 8; ++bit) {
            const bool before = (seen.levels.high >> bit & 1) != 0, after = (next.levels.high >> bit & 1) != 0;
            if (before != after) edges.push_back({when.count(), 21 + bit, after});
        }
        EXPECT_GT(next.until, when);
        seen = next;
    }
    return edges;
}

}  // namespace tamrix::tests
