// Writes down what a self-test does with its programmer and what its person notices: one line a call or event, in
// order.
#pragma once

#include "programmer/programmer.h"
#include "selftest/selftest_variables.h"

#include <string>
#include <vector>

namespace tamrix::tests {

/// Programmers of `source` with every call written to `lines` before it happens: its name and its arguments, in
/// decimal. A frame is written with its bytes, a block of data with its checksum. `lines` has to outlive them.
hw::programmer_source with_transcript(hw::programmer_source source, std::vector<std::string>& lines);

/// An event as a line of the same transcript: "status TEXT" ("status2 TEXT" for panel 2), "beep", "box TITLE | TEXT",
/// "runstp" where a wait begins, "continue" and "stop" for the person's press.
std::string line_of(const selftest_event& event);

}  // namespace tamrix::tests
