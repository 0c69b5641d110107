// A programmer for the tests of the self-test: it knows as much of the hardware as a sound one shows to them, and lets
// a test break single things.
#pragma once

#include "programmer/programmer.h"
#include "support/recording_programmer.h"

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace tamrix::tests {

struct small_programmer {
    // What a test breaks.
    bool test_board = false;
    int open_line = -1;  // of the test board: that of this lamp of the left column
    std::int32_t hwreset_result = 0;
    bool large_ram = true;
    std::set<int> bad_blocks;                            // of 32768 bytes: their first byte is read wrong
    std::function<void(std::vector<bool>& pins)> spoil;  // the pins by lamp, just before they are read
    std::function<int(int board, int reg, int value)> spoil_register;
    int replies_until_lost = -1;    // so many come, then none; -1: all come
    int writes_until_refused = -1;  // so many frames and blocks are taken, then none
    bool reads_end = true;          // else a bulk read never ends
    std::int32_t ctlout_result = 0;

    // What it is set to.
    int board = -1, level_switch = 0, mode = 0;
    std::array<std::uint8_t, 6> outputs{}, masks{255, 255, 255, 255, 255, 255};
    int driver = 0, driver_pin = 0;  // that is switched on; 0: none
    std::map<int, int> vpp;          // millivolts by generator
    bool powered = false;            // since the last reset
    std::vector<std::uint8_t> ram = std::vector<std::uint8_t>(16 * 32768);
    std::size_t write_at = 0;

    /// The six ports as they read now.
    std::array<std::uint8_t, 6> read_ports();
    hw::programmer_source source();
};

}  // namespace tamrix::tests
