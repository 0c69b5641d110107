// What the main window says after logic tests: a line for each in its log, and the pins that failed on the chip's
// picture.
#include "workbench/logic_verdict.h"
#include "workbench/main_frame.h"

namespace tamrix::workbench {

void main_frame::propose_chip()
{
    const host::simulated_chip* const chip = socket_ != nullptr ? socket_->chip() : nullptr;
    session_.propose_logic_device(chip != nullptr ? chip->name : std::string{});
}

void main_frame::tell_logic_tests()
{
    for (const logic_test& test : session_.logic_tests()) {
        const bool of_library = !test.device.empty();
        const std::string line =
            (of_library ? "Logic test of " + test.device : "Vector test of " + session_.device().name) + ": " +
            words_of(test);
        if (is_trouble(test)) {
            log_->trouble(line);
        } else {
            log_->remark(line);
        }
        if (of_library) socket_panel_->mark_failed(test);
    }
}

}  // namespace tamrix::workbench
