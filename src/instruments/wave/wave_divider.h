// The signal generator's divider: a model of the loop in the programmer that makes the square wave.
#pragma once

#include "channel/model.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tamrix {

/// A text that is no frequency, or a frequency without a divider.
class frequency_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the divider depends on besides the frequency.
struct wave_source {
    bool usb;
    hw::output_loop loop;
    std::uint8_t generation;  // wfig(1)
};

struct wave_divider {
    std::uint8_t lo = 0, mid = 0, hi = 0;
    std::optional<std::string> shown{};  // in place of the typed frequency; none leaves it

    bool operator==(const wave_divider&) const = default;
};

/// The hertz of a typed text: 0 to 2147483647. Throws frequency_error.
std::int32_t typed_frequency(std::string_view text);

/// The divider of `hertz`, which is not negative. Throws frequency_error for 0, which only the loop of the fixed set
/// has a divider for.
wave_divider divide(std::int32_t hertz, const wave_source& source);

}  // namespace tamrix
