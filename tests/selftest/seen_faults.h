// What a self-test can see of one fault: worked out from the levels at the pins, stage by stage, apart from the code.
#pragma once

#include "selftest/selftest_fault.h"
#include "selftest/selftest_variables.h"
#include "sim_bench.h"

#include <iosfwd>
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
    // Of a module.
    module_missing,
    board_missing,
    fpga_idle_once,
    fpga_idle_twice,
    fpga_idle,
};

struct single_fault {
    fault_kind kind;
    int at = 0;      // a pin from 1, a register, or a bank
    int board = 0;   // of a register
    int module = 0;  // from 1; 0 is the programmer itself

    /// As the simulated programmer takes it.
    std::string text() const;
};

/// One line of what is found.
struct finding {
    selftest_stage stage;
    int module = 0;
    int at = 0;      // a pin, a register or a bank
    int driven = 0;  // the pin that was driven; a register's board
    int read = 0;    // a level, or a register's byte

    bool operator==(const finding&) const = default;
};
std::ostream& operator<<(std::ostream& out, const finding& found);
finding finding_of(const selftest_fault& found);
bool has(std::span<const single_fault> faults, fault_kind kind, int module);
/// Whether it says where the fault is.
bool tells(const finding& found, const single_fault& fault);

/// All that a System Test finds of such faults, in order.
std::vector<finding> seen_by_system_test(const situation& where, std::span<const single_fault> faults);
/// All that an Output Test finds of them with the board in the socket, in order.
std::vector<finding> seen_by_output_test(const situation& where, std::span<const single_fault> faults);
/// How such a test ends where the person always goes on.
selftest_result end_of_system_test(const situation& where, std::span<const single_fault> faults);
selftest_result end_of_output_test(const situation& where, std::span<const single_fault> faults);
/// Why a test of the model sees nothing of it.
std::string why_invisible(const situation& where, const single_fault& fault);

}  // namespace tamrix::tests
