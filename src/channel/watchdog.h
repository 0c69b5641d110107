// Limits a wait for the programmer, while the dialog above stays alive.
#pragma once

#include <cstdint>

namespace tamrix::forms {
class shell;
}

namespace tamrix::hw {

/// Runs from its construction. A loop that waits calls pump() in each round and checks `prgresult(0)` itself, since
/// others may set it to 3 too.
class watchdog {
public:
    /// `prgresult` is element 0 of the block and outlives the watchdog.
    watchdog(forms::shell& screen, std::uint8_t& prgresult, double limit_ms);

    /// One round of the message pump. The first time that the limit has passed after it, sets `prgresult(0)` to 3.
    void pump();
    /// True if `prgresult(0)` is 3, whoever set it.
    bool timed_out() const;

private:
    forms::shell& screen_;
    std::uint8_t& prgresult_;
    double due_seconds_;
    bool enabled_ = true;
};

}  // namespace tamrix::hw
