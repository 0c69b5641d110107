// What an instrument sees at the pins of port 0, at any time from its start on.
#pragma once

#include "sim/clock.h"
#include "sim/input_view.h"
#include "sim/signals/signal_walk.h"

namespace tamrix::sim {

/// Independent of the programmer, so that the clock's context can use it while the programmer does other things.
class port_watch {
public:
    struct reading {
        std::uint8_t port;
        nanoseconds until;
    };

    port_watch() = default;
    /// `origin` is the clock's time at which the signals began.
    port_watch(signal_walk walk, const input_view& view, nanoseconds origin)
        : walk_{std::move(walk)}, view_{view}, origin_{origin}
    {}

    /// By the clock's time; it never goes back.
    reading look(nanoseconds when)
    {
        const glimpse seen = walk_.look(when - origin_);
        return {view_.read(seen.levels), seen.until == for_ever ? for_ever : seen.until + origin_};
    }

private:
    signal_walk walk_{};
    input_view view_{};
    nanoseconds origin_{0};
};

}  // namespace tamrix::sim
