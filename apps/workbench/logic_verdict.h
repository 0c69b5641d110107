// How a logic test ended, in words.
#pragma once

#include "tamrix/clstamrix.h"

#include <string>
#include <vector>

namespace tamrix::workbench {

/// What the plug-in says about a logic test, in memory of the host's own.
struct logic_test {
    tamrix_logic_result result;
    std::string device;  // empty: the vectors were those of the host's device
    int pins = 0;        // of the device
    int rows_failed = 0, rows_ignored = 0;
    std::vector<int> failed_pins{};  // from 1, ascending

    bool operator==(const logic_test&) const = default;
};

logic_test taken_over(const tamrix_logic_test& described);

/// "passed", "2 rows failed, ignored (pins 3, 6)", "failed, 3 rows, 1 ignored (pin 3)", "no vectors were played".
std::string words_of(const logic_test& test);
/// Whether these are words to worry about.
bool is_trouble(const logic_test& test);

}  // namespace tamrix::workbench
