#include "sim/signals/timetable.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tamrix::sim {

nanoseconds timetable::length() const { return nanoseconds{std::llround(written_ * 1e9)}; }

void timetable::set(std::uint8_t pins, bool high)
{
    const std::uint8_t before = steps_.back().high;
    const auto after = static_cast<std::uint8_t>(high ? before | pins : before & ~pins);
    if (after == before) return;
    if (steps_.back().at == length()) {
        steps_.back().high = after;
    } else {
        steps_.push_back({length(), after});
    }
}

void timetable::hold(double seconds) { written_ += seconds; }

glimpse timetable::look(nanoseconds when) const
{
    if (when < start_) return {{pins_, rest_}, start_};
    nanoseconds round = start_, end = for_ever;
    if (every_.count() > 0) {
        round += (when - start_) / every_ * every_;
        end = round + every_;
    }
    const auto later = std::ranges::upper_bound(steps_, when - round, {}, &step::at);
    return {{pins_, std::prev(later)->high}, later == steps_.end() ? end : round + later->at};
}

}  // namespace tamrix::sim
