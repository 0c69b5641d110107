#include "sim/signals/waves.h"

namespace tamrix::sim {

namespace {

/// Spreads a number over all bits of a word, so that successive numbers have nothing in common.
std::uint64_t spread(std::uint64_t number)
{
    number += 0x9E3779B97F4A7C15u;
    number = (number ^ (number >> 30)) * 0xBF58476D1CE4E5B9u;
    number = (number ^ (number >> 27)) * 0x94D049BB133111EBu;
    return number ^ (number >> 31);
}

std::uint8_t low_byte(std::uint64_t number) { return static_cast<std::uint8_t>(number & 0xFF); }

}  // namespace

noise::noise(std::uint8_t pins, double hertz, std::uint64_t start) : pins_{pins}, step_{hertz}, start_{spread(start)} {}

/// An analyzer asks for each sample, so the usual case calculates two edges alone.
glimpse square_wave::look(nanoseconds when) const
{
    const std::int64_t n = rise_.about(when);
    const nanoseconds likely_fall = fall_.edge(n);
    if (when < likely_fall) {
        if (rise_.edge(n) <= when) return {{pins_, pins_}, likely_fall};
    } else if (const nanoseconds next_rise = rise_.edge(n + 1); when < next_rise) {
        return {{pins_, 0}, next_rise};
    }
    const beat::lap period = rise_.at(when);
    const nanoseconds fall = fall_.edge(period.number);
    if (when < fall) return {{pins_, pins_}, fall};
    return {{pins_, 0}, period.end};
}

glimpse binary_counter::look(nanoseconds when) const
{
    const beat::lap step = step_.at(when);
    unsigned high = 0;
    int bit = 0;
    for (int pin = 0; pin < 8; ++pin) {
        if ((pins_ >> pin & 1) == 0) continue;
        high |= static_cast<unsigned>(step.number >> bit & 1) << pin;
        ++bit;
    }
    return {{pins_, static_cast<std::uint8_t>(high)}, step.end};
}

glimpse noise::look(nanoseconds when) const
{
    const beat::lap step = step_.at(when);
    const std::uint8_t thrown = low_byte(spread(start_ + static_cast<std::uint64_t>(step.number)));
    return {{pins_, static_cast<std::uint8_t>(thrown & pins_)}, step.end};
}

}  // namespace tamrix::sim
