// A horizontal scroll bar.
#pragma once

#include "forms/control.h"

#include <cstdint>
#include <functional>

namespace tamrix::forms {

enum class scroll_step : std::uint8_t { small_back, small_on, large_back, large_on, to_min, to_max };

/// The value is always from min to max: one outside becomes the nearest end. A max below min counts as min. All are 0
/// at first.
class scroll_bar final : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }

    property<std::int32_t> small_change{*this, 1}, large_change{*this, 1};
    /// Raised after the value has changed, whoever changed it.
    std::function<void()> on_change;

    std::int32_t min() const { return min_; }
    std::int32_t max() const { return max_; }
    std::int32_t value() const { return value_; }
    void min(std::int32_t least);
    void max(std::int32_t most);
    void value(std::int32_t wanted);

    /// The person drags the slider.
    void drag(std::int32_t wanted);
    /// The person presses an arrow, the bar beside the slider, or a key.
    void step(scroll_step how);

private:
    void assign(std::int32_t least, std::int32_t most, std::int64_t wanted);

    std::int32_t min_ = 0, max_ = 0, value_ = 0;
};

}  // namespace tamrix::forms
