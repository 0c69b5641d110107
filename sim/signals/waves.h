// Signals that need no more than a formula. `pins` is a mask, bit 0 is P21.
#pragma once

#include "sim/signals/beat.h"

#include <memory>

namespace tamrix::sim {

class steady final : public signal {
public:
    steady(std::uint8_t pins, bool high) : levels_{pins, high ? pins : std::uint8_t{0}} {}
    glimpse look(nanoseconds) const override { return {levels_, for_ever}; }

private:
    pin_levels levels_;
};

/// High for the first part `duty` (above 0, below 1) of each period. At time 0 the part `phase` of a period is over.
class square_wave final : public signal {
public:
    square_wave(std::uint8_t pins, double hertz, double duty = 0.5, double phase = 0)
        : pins_{pins}, rise_{hertz, -phase}, fall_{hertz, duty - phase}
    {}
    glimpse look(nanoseconds when) const override;

private:
    std::uint8_t pins_;
    beat rise_, fall_;
};

/// Counts up from 0 at each beat; the lowest of its pins is bit 0 of the count.
class binary_counter final : public signal {
public:
    binary_counter(std::uint8_t pins, double hertz) : pins_{pins}, step_{hertz} {}
    glimpse look(nanoseconds when) const override;

private:
    std::uint8_t pins_;
    beat step_;
};

/// Each pin is thrown anew at each beat. The same start gives the same noise.
class noise final : public signal {
public:
    noise(std::uint8_t pins, double hertz, std::uint64_t start);
    glimpse look(nanoseconds when) const override;

private:
    std::uint8_t pins_;
    beat step_;
    std::uint64_t start_;
};

}  // namespace tamrix::sim
