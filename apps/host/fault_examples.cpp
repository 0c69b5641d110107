#include "host/fault_examples.h"

namespace tamrix::host {

std::span<const char* const> fault_examples()
{
    static constexpr const char* examples[] = {"vcc driver 7 dead",
                                               "vcc driver 7 always on",
                                               "vpp driver 7 dead",
                                               "vpp driver 7 always on",
                                               "ground driver 7 dead",
                                               "ground driver 7 always on",
                                               "high driver 7 dead",
                                               "low driver 7 dead",
                                               "input 7 stuck 0",
                                               "input 7 stuck 1",
                                               "pins 7 and 8 bridged",
                                               "pull-down 7 dead",
                                               "pull-down dead",
                                               "bad ram bank 3",
                                               "bad register 3 of board 5",
                                               "test board line 7 open",
                                               "test board missing",
                                               "lost reply",
                                               "read never ends",
                                               "marker never comes",
                                               "no answer",
                                               "module 3 missing",
                                               "bad ram bank 3 of module 2",
                                               "fpga 2 does not start",
                                               "test board of module 2 missing"};
    return examples;
}

}  // namespace tamrix::host
