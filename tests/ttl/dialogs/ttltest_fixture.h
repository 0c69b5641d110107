// The dialog of the logic IC test on a library of three devices, with its test face or its library face.
#pragma once

#include "ttl/dialogs/dialog_fixture.h"
#include "ttl/dialogs/ttltest.h"

#include <cstdint>
#include <functional>

namespace tamrix::tests {

using forms::answer;
using forms::buttons_of_box;
using forms::icon;
using forms::message_box;

class ttltest_dialog : public logic_dialog_fixture {
protected:
    ttltest_dialog() { write_library({passing, failing, cmos}); }

    /// Opens the dialog with its library face or without, and forgets what opening asked of the programmer.
    void open(std::uint8_t ttleditlib, const std::function<void(ttltest&)>& steps)
    {
        variables.ttl.ttleditlib = ttleditlib;
        ttltest dialog{session, variables.ttl, variables.pld};
        shell.during(dialog, [&] {
            opening = calls();
            steps(dialog);
        });
    }
    void in_test_mode(const std::function<void(ttltest&)>& steps) { open(0, steps); }
    void in_library(const std::function<void(ttltest&)>& steps) { open(1, steps); }

    lines opening;
};

}  // namespace tamrix::tests
