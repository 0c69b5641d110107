// What a run of a self-test came to, in words.
#pragma once

#include "selftest/selftest_variables.h"

#include <string>

namespace tamrix {

/// For instance "passed", "failed, 2 faults", "not carried out: no test board in the socket". A run that looked at less
/// than everything says so. English.
std::string verdict_of(const selftest_report& report);

/// The verdict, and each fault that counts on a line of its own after it; no line end after the last. Empty where
/// nothing has run.
std::string report_text(const selftest_report& report);

}  // namespace tamrix
