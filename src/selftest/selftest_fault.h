// What a self-test found: faults and what it could not look at, as values with their words.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix {

enum class selftest_stage : std::uint8_t { ram, fpga, input, vpp, vcc, ground, registers, output };

/// "RAM", "input", "VPP driver" and so on, as a fault's words name the stage.
std::string name_of(selftest_stage stage);

struct selftest_fault {
    selftest_stage stage = selftest_stage::input;
    int pin = 0;         // of the socket, from 1; 0 where the fault is at no pin
    int driven_pin = 0;  // whose driver was on, or which line was driven; 0 where none was
    int port = 0;        // 0 to 5, and
    int bit = 0;         // 0 to 7: where the pin was read
    int board = 0;       // of a register
    int place = 0;       // the register's number, or the RAM's block from 0
    int slot = 0;        // the module's number from 1; 0 on programmers without modules
    int expected = 0;    // a pin's level, 0 or 1; else a byte
    int read = 0;        // the same as `expected` for a block of RAM that could not be tested

    bool operator==(const selftest_fault&) const = default;
};

/// For instance "pin 7 (port 3 bit 2): VCC driver of pin 9: expected high, read low".
std::string words_of(const selftest_fault& fault);

/// Pins that a stage could not look at; 0 where it is not about pins.
struct untested_pins {
    selftest_stage stage = selftest_stage::input;
    int count = 0;
    std::string reason{};

    bool operator==(const untested_pins&) const = default;
};

/// For instance "input: 8 pins not tested (why)".
std::string words_of(const untested_pins& pins);

/// All of them in a line, those of a stage together: "not tested: 8 input, 48 VPP driver".
std::string short_words_of(const std::vector<untested_pins>& all);

}  // namespace tamrix
