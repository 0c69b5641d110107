// What is put on the inputs P21 to P28 of a simulated programmer: levels as a function of time.
#pragma once

#include <chrono>
#include <cstdint>

namespace tamrix::sim {

using nanoseconds = std::chrono::nanoseconds;

inline constexpr nanoseconds for_ever = nanoseconds::max();

/// Of the eight inputs, bit 0 is P21 and bit 7 is P28. What is not driven is not high either.
struct pin_levels {
    std::uint8_t driven = 0, high = 0;
    bool operator==(const pin_levels&) const = default;
};

/// The levels at some time, which do not change before `until`; that is later than the time that was asked for.
struct glimpse {
    pin_levels levels{};
    nanoseconds until = for_ever;
};

/// A pure function of time: the same answer whenever and however often it is asked, from any thread.
class signal {
public:
    virtual ~signal() = default;
    /// `when` is 0 or later.
    virtual glimpse look(nanoseconds when) const = 0;
};

}  // namespace tamrix::sim
