// What the compiler's static run time never releases by itself: memory, handles, slots for thread data. Without this, a
// DLL would leave them in the host at each unload.
#pragma once

namespace tamrix::com {

/// Call this when the DLL is being unloaded while the process continues: everything is released as the DLL's very last
/// step, after its static objects. When the process ends, nothing is touched: other threads may have ended anywhere.
void give_back_run_time();

}  // namespace tamrix::com
