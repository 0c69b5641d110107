// The function boards of a programmer: which one is selected, what that changes, and the registers that each board
// shows while it is read back.
#pragma once

#include "sim/faults.h"

#include <cstdint>
#include <optional>

namespace tamrix::sim {

class function_board {
public:
    explicit function_board(const fault_set& faults) : faults_{faults} {}

    /// By one code, or by two.
    void select(int code);
    void select(int first, int second);
    void set_mode(std::int32_t mode) { mode_ = mode; }
    /// The function switch: 0 in register 11 hands the registers to the boards. It keeps its state over a reset.
    void take_switch(std::uint8_t value) { handed_over_ = value == 0; }
    /// As after switching on: nothing is selected.
    void reset();

    bool selected() const { return code_.has_value(); }
    /// Function 7: the pull of the inputs follows register 50, and the outermost pins are connected on every
    /// generation.
    bool has_input_test() const { return code_ == 7; }
    /// The drivers are tested: control addresses above 128 switch them one by one, and the supply rails rest at 5 V.
    bool has_driver_test() const { return driver_test_; }
    /// The ports do not reach the pins but the selected board's registers.
    bool reads_back() const { return handed_over_ && mode_ == 1; }
    /// What register `number` shows after `written`: the bits that the board has.
    std::uint8_t read_back(int number, std::uint8_t written) const;
    /// A defect of register `number` of the selected board, seen while the boards have the registers: bits that read
    /// inverted.
    std::uint8_t wrong_bits(int number) const;

private:
    const fault_set& faults_;
    std::optional<int> code_;
    bool driver_test_ = false;
    std::int32_t mode_ = 0;
    bool handed_over_ = false;
};

}  // namespace tamrix::sim
