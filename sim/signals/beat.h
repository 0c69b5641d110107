// The edges of something that repeats with a frequency.
#pragma once

#include "sim/signals/signal.h"

namespace tamrix::sim {

/// Edge `n` is at n + `offset` periods, rounded up to nanoseconds. Which edges are past is decided by these times
/// themselves, so that no edge is lost or seen twice, however long the beat goes on.
class beat {
public:
    explicit beat(double hertz, double offset = 0) : period_{1e9 / hertz}, frequency_{hertz / 1e9}, offset_{offset} {}

    nanoseconds edge(std::int64_t n) const
    {
        const double when = (static_cast<double>(n) + offset_) * period_;
        const auto whole = static_cast<std::int64_t>(when);
        return nanoseconds{static_cast<double>(whole) < when ? whole + 1 : whole};
    }
    /// Between an edge and the next one.
    struct lap {
        std::int64_t number;
        nanoseconds begin, end;
    };
    /// The number of the last edge, or of a neighbour.
    std::int64_t about(nanoseconds when) const
    {
        return static_cast<std::int64_t>(static_cast<double>(when.count()) * frequency_ - offset_);
    }
    lap at(nanoseconds when) const
    {
        std::int64_t n = about(when);
        lap found{n, edge(n), edge(n + 1)};
        for (; found.begin > when; --n) found = {n - 1, edge(n - 1), found.begin};
        for (; found.end <= when; ++n) found = {n + 1, found.end, edge(n + 2)};
        return found;
    }

private:
    double period_, frequency_, offset_;  // in nanoseconds, a nanosecond, and in periods
};

}  // namespace tamrix::sim
