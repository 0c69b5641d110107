// What the self-test dialogs go by, and what the last run left: for the dialogs, the command line and the workbench.
#pragma once

#include "selftest/selftest_fault.h"

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace tamrix {

/// How a run ended.
enum class selftest_result : std::uint8_t {
    none,  // nothing has run
    passed,
    failed,
    stopped,              // by the Stop button, or by closing the dialog
    not_answered,         // the programmer did not answer to its reset
    communication_error,  // a reply did not come
    no_test_board,
};

/// One run of the System Test or of the Output Test.
struct selftest_report {
    std::int16_t model = 0;
    int item = 0;  // the index of the option
    selftest_result result = selftest_result::none;
    std::vector<selftest_fault> faults{};
    std::vector<selftest_fault> kept_quiet{};  // seen by a stage that shows none; they do not count
    std::vector<untested_pins> not_tested{};
};

/// What a person notices of a run, and what the person does.
struct selftest_event {
    enum class kind : std::uint8_t { status, beep, box, wait, go_on, stop } what;
    int panel = 1;        // of a status
    std::string text{};   // of a status or a box
    std::string title{};  // of a box
};

struct selftest_variables {
    std::uint8_t pinmapmode = 0;  // 0: the self-test; 1 to 4: a pin map for another dialog
    selftest_report last;
    /// False where the reset that began the last run or calibration was not answered. Of these only a System Test by
    /// registers ends there.
    bool answered = true;
    /// Where the random bytes of a run start; each run asks once.
    std::function<std::uint32_t()> random_start = [] { return std::random_device{}(); };
    /// Called as things happen, assignments of a text that is already there included. May be empty.
    std::function<void(const selftest_event&)> on_event;
};

}  // namespace tamrix
