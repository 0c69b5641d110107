// What the compiler's static run time holds and never gives back by itself: memory, handles, places for data of
// threads. A DLL that comes and goes would leave them in the host with each unload.
#pragma once

namespace tamrix::com {

/// To be called when the DLL is being unloaded while the process lives on: all is given back as the DLL's very last
/// step, after its static objects. Where the process ends, nothing is touched: other threads may have died anywhere.
void give_back_run_time();

}  // namespace tamrix::com
