// What a self-test can see of one fault: worked out from the levels at the pins, stage by stage, apart from the code.
#pragma once

#include "selftest/selftest_fault.h"
#include "sim_bench.h"

#include <span>
#include <string>
#include <vector>

namespace tamrix::tests {

enum class fault_kind : std::uint8_t {
    vpp_dead,
    vpp_on,
    vcc_dead,
    vcc_on,
    ground_dead,
    ground_on,
    high_dead,
    high_on,
    low_dead,
    low_on,
    stuck_low,
    stuck_high,
    bridge,  // with the next pin
    pull_down_dead,
    line_open,  // of the test board
    bad_register,
    bad_bank,
};

struct single_fault {
    fault_kind kind;
    int at = 0;     // a pin from 1, a register, or a bank
    int board = 0;  // of a register

    /// As the simulated programmer takes it.
    std::string text() const;
};

/// One line of what is found: stage, pin that was read, driven pin (a board and its register, a bank), level.
using finding = std::string;
finding finding_of(const selftest_fault& found);

/// All that a System Test finds of such faults, sorted.
std::vector<finding> seen_by_system_test(const situation& where, std::span<const single_fault> faults);
/// All that an Output Test finds of them with the board in the socket, sorted.
std::vector<finding> seen_by_output_test(const situation& where, std::span<const single_fault> faults);
/// Why a test of the model sees nothing of it.
std::string why_invisible(const situation& where, const single_fault& fault);

}  // namespace tamrix::tests
