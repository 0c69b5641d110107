// Runs of the System Test, and what their transcripts say.
#pragma once

#include "selftest_bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

/// Presses Test with the System Test selected.
inline void run(selftest_bench& b)
{
    b.during([&](pinnote& dialog) {
        b.transcript.clear();
        dialog.testbutton.click();
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(1).usable());
        EXPECT_EQ(dialog.testbutton.caption(), "Test");
        EXPECT_FALSE(dialog.teststop.usable());
        EXPECT_EQ(dialog.testbusy() + dialog.teststep() + dialog.teststopped(), 0);
    });
}

/// A run in which the person presses Continue, or Stop, at every wait.
inline void run_and_press(selftest_bench& b, bool go_on)
{
    b.during([&](pinnote& dialog) {
        b.at_wait = [&] { (go_on ? dialog.testbutton : dialog.teststop).click(); };
        b.transcript.clear();
        dialog.testbutton.click();
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(1).usable());
        EXPECT_FALSE(dialog.teststop.usable());
    });
}

inline lines statuses(const selftest_bench& b)
{
    lines found;
    for (const std::string& line : b.transcript)
        if (line.starts_with("status")) found.push_back(line == "status" ? "" : line.substr(7));
    return found;
}

/// The calls from the first line that begins with `from`, so many.
inline lines calls_from(const selftest_bench& b, std::string_view from, std::ptrdiff_t count)
{
    const auto first = std::ranges::find_if(b.transcript, [&](const auto& line) { return line.starts_with(from); });
    return {first, first + std::min(count, b.transcript.end() - first)};
}

}  // namespace tamrix::tests
