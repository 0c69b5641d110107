// Limits a wait for the programmer, while the dialog above stays alive.
#pragma once

#include <cstdint>

namespace tamrix::forms {
class shell;
}

namespace tamrix::hw {

/// Runs from its making on. A loop that waits calls pump() in each round and looks at `prgresult(0)` itself, since
/// others may set it to 3 as well.
class watchdog {
public:
    /// `prgresult` is element 0 of the block and has to outlive the watchdog.
    watchdog(forms::shell& screen, std::uint8_t& prgresult, double limit_ms);

    /// One round of the message pump. Where the limit is over then, sets `prgresult(0)` to 3, once.
    void pump();
    /// True where `prgresult(0)` is 3, whoever set it.
    bool timed_out() const;

private:
    forms::shell& screen_;
    std::uint8_t& prgresult_;
    double due_seconds_;
    bool enabled_ = true;
};

}  // namespace tamrix::hw
