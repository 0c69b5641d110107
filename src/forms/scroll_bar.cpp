#include "forms/scroll_bar.h"

#include <algorithm>

namespace tamrix::forms {

void scroll_bar::assign(std::int32_t least, std::int32_t most, std::int64_t wanted)
{
    most = std::max(least, most);
    const auto value = static_cast<std::int32_t>(std::clamp<std::int64_t>(wanted, least, most));
    const bool other_value = value != value_;
    if (!other_value && least == min_ && most == max_) return;
    min_ = least;
    max_ = most;
    value_ = value;
    changed();
    if (other_value) raise(on_change);
}

void scroll_bar::min(std::int32_t least) { assign(least, max_, value_); }

void scroll_bar::max(std::int32_t most) { assign(min_, most, value_); }

void scroll_bar::value(std::int32_t wanted) { assign(min_, max_, wanted); }

void scroll_bar::drag(std::int32_t wanted)
{
    if (usable()) value(wanted);
}

void scroll_bar::step(scroll_step how)
{
    if (!usable()) return;
    const auto by = [this](std::int64_t change) { assign(min_, max_, value_ + change); };
    switch (how) {
    case scroll_step::small_back: return by(-std::int64_t{small_change()});
    case scroll_step::small_on: return by(small_change());
    case scroll_step::large_back: return by(-std::int64_t{large_change()});
    case scroll_step::large_on: return by(large_change());
    case scroll_step::to_min: return value(min_);
    case scroll_step::to_max: return value(max_);
    }
}

}  // namespace tamrix::forms
