// A signal that is written down: levels one after another, each for some time.
#pragma once

#include "sim/signals/signal.h"

#include <vector>

namespace tamrix::sim {

class timetable final : public signal {
public:
    /// Starts with the levels of rest, the high pins of `pins`.
    timetable(std::uint8_t pins, std::uint8_t rest) : pins_{pins}, rest_{rest}, steps_{{nanoseconds{0}, rest}} {}

    /// Makes these pins high or low from here on.
    void set(std::uint8_t pins, bool high);
    /// What was set lasts so long.
    void hold(double seconds);
    nanoseconds length() const;
    /// Everything happens so much later.
    void start_at(nanoseconds start) { start_ = start; }
    /// Begins again so long after each beginning; not shorter than its length. 0: once only.
    void repeat_every(nanoseconds every) { every_ = every; }

    glimpse look(nanoseconds when) const override;

private:
    struct step {
        nanoseconds at;
        std::uint8_t high;
    };

    std::uint8_t pins_, rest_;
    std::vector<step> steps_;  // by time
    double written_ = 0;       // seconds
    nanoseconds start_{0}, every_{0};
};

}  // namespace tamrix::sim
