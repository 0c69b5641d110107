// The calls of a self-test, played by hand on a bench, and the bits that came back wrong.
#pragma once

#include "sim/bench.h"

#include <string>
#include <vector>

namespace tamrix::tests {

struct self_test_player : bench {
    self_test_player(int model, bool by_usb, int generation = 0);

    bool usb_route;
    bool full;  // the hardware's generation lets all six ports be looked at
    std::array<std::uint8_t, 16> sent{};
    std::vector<std::string> wrong{};

    using texts = std::vector<std::string>;
    /// The stages of the system test in their order; what is wrong is in `wrong`.
    const texts& system_test();
    /// The count of wrong bits of each sweep of the output test; `lines` wrong ones by name in `wrong`.
    std::vector<int> output_test();

    void begin();
    void input_stage();
    void driver_stage(const char* name, std::uint8_t code, int level);
    void reset_ports();
    void register_stage();
    void select(std::uint8_t function);
    /// One read of all inputs at a level, with register 50 set for it.
    void read_inputs(int level);
    /// One register test pass over registers 1 to `count` of a board; `ones` or zeroes.
    std::vector<int> board_pass(int count, bool ones);
    /// The count of wrong bits over all lines.
    int sweep(int first, int limit, int level, int side);

    std::vector<int> pins_of(std::uint8_t code) const;
    void send(std::int32_t length);
    void fill(std::uint8_t outputs, std::uint8_t companions);
    ports answer();
    ports read_after_switch();
    /// Pins that differ from what is expected of them: `wanted` for `pin` and its partner, `level` for the others.
    std::vector<int> unlike(const ports& levels, int level, int pin, int partner, int count) const;
};

}  // namespace tamrix::tests
