// The unit of the times that are written. Used by this folder only.
#pragma once

#include "capture/sample_period.h"

#include <array>

namespace tamrix::capture {

struct time_unit {
    const char* name;
    std::uint64_t femtoseconds;
    int decimals;  // of a second
};
inline constexpr std::array<time_unit, 9> time_units_written{{{"100 ns", 100'000'000, 7},
                                                              {"10 ns", 10'000'000, 8},
                                                              {"1 ns", 1'000'000, 9},
                                                              {"100 ps", 100'000, 10},
                                                              {"10 ps", 10'000, 11},
                                                              {"1 ps", 1'000, 12},
                                                              {"100 fs", 100, 13},
                                                              {"10 fs", 10, 14},
                                                              {"1 fs", 1, 15}}};

/// The first one that the period is a multiple of. Without one, the first that a period has a thousand of; the periods
/// are so long, and so few times are above them, that every time fits.
inline const time_unit& unit_for(const sample_period& period)
{
    constexpr std::uint64_t most_units = 1'000'000'000;
    for (const auto& unit : time_units_written) {
        const std::uint64_t count = period.numerator() / unit.femtoseconds;
        if (period.denominator() == 1 && period.numerator() % unit.femtoseconds == 0 && count <= most_units)
            return unit;
    }
    for (const auto& unit : time_units_written) {
        if (period.numerator() / period.denominator() >= 1000 * unit.femtoseconds) return unit;
    }
    return time_units_written.back();
}

}  // namespace tamrix::capture
