// A chip as gates and registers: what a stanza compiles to, and what is played.
#pragma once

#include "chips/chip_text.h"

namespace tamrix::sim {

using gate_id = std::uint32_t;

enum class gate_kind : std::uint8_t { constant_0, constant_1, pin, reg, invert, both, either, differ };

/// A gate comes after those that it reads. `a` is the index of a pin or register, or of the first gate read.
struct gate {
    gate_kind kind = gate_kind::constant_0;
    gate_id a = 0, b = 0;
};

struct clause {
    trigger when = trigger::hold;
    gate_id condition = 0, data = 0;
};

/// Level clauses come first and have priority over edges; among equals the first one wins.
struct reg {
    std::string name;
    std::vector<clause> clauses;
};

/// `both`: sometimes driven, and also read by the chip.
enum class pin_role : std::uint8_t { input, output, both, vcc, gnd, none };

struct pin {
    std::string name;
    pin_role role = pin_role::none;
    gate_id value = 0;
    gate_id enable = 0;  // the pin is driven while this is 1
    bool open_collector = false;
    bool clock = false;       // an edge of it moves a register
    bool pulse_only = false;  // rests low: what happens while it is high is undefined
};

/// A condition on the way from one row to the next: with pins, these must not change while it is 1; without, it is
/// never 1.
struct caution {
    gate_id condition = 0;
    std::vector<std::size_t> pins;
};

struct circuit {
    std::vector<gate> gates;
    std::vector<reg> registers;
    std::vector<pin> pins;
    std::vector<gate_id> avoided;  // none of them may be 1 once the registers are known
    std::vector<caution> cautions;
    int vcc = -1, gnd = -1;
};

/// Throws chip_error.
circuit compile(const chip_text& chip);

}  // namespace tamrix::sim
