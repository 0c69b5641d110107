// A run as a person makes it: an option is chosen, Test is pressed, and a button at every wait.
#pragma once

#include "selftest_bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

/// The transcript from the press of Test to the end of the run. At a wait `at_wait` presses; without it, Continue is
/// pressed.
template <class Dialog>
lines press_test(selftest_bench& b, int option = 0, const std::function<void(Dialog&)>& at_wait = {})
{
    lines ran;
    b.during<Dialog>([&](Dialog& dialog) {
        b.at_wait = [&] { at_wait ? at_wait(dialog) : dialog.testbutton.click(); };
        dialog.Option1(option).click();
        b.transcript.clear();
        dialog.testbutton.click();
        ran = b.transcript;
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(1).usable());
        EXPECT_EQ(dialog.testbutton.caption(), "Test");
        EXPECT_FALSE(dialog.teststop.usable());
    });
    return ran;
}

}  // namespace tamrix::tests
