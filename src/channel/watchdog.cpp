#include "channel/watchdog.h"

#include "base/other_side.h"
#include "channel/send.h"
#include "forms/shell.h"

namespace tamrix::hw {

watchdog::watchdog(forms::shell& screen, std::uint8_t& prgresult, double limit_ms)
    : screen_{screen}, prgresult_{prgresult}, due_seconds_{screen.seconds() + limit_ms / 1000}
{}

void watchdog::pump()
{
    screen_.doevents();
    if (!enabled_ || screen_.seconds() < due_seconds_) return;
    enabled_ = false;
    write_other_side(prgresult_, prgresult_timed_out);
}

bool watchdog::timed_out() const { return read_other_side(prgresult_) == prgresult_timed_out; }

}  // namespace tamrix::hw
