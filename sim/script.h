// The script of a vector run: acts that wait until they are started, and the bytes that their reads gave.
#pragma once

#include "sim/machine.h"

#include <cstdint>
#include <vector>

namespace tamrix::sim {

class script {
public:
    enum class act_kind : std::uint8_t { out, read, wait, ground, vcc, vpp };
    struct act {
        act_kind kind;
        std::int32_t value = 0;    // byte, state, or microseconds
        std::uint8_t address = 0;  // register or pin code
    };

    /// The script frame came. It asks for the results that there are; the next act that is entered begins a new script.
    void open() { opened_ = true; }
    /// False where there is no room for it.
    bool enter(const act& one);
    /// Plays what has been entered since the last start; yields the time that the hardware needs for it.
    microseconds start(machine& hardware);
    /// `count` bytes of the results, 0 behind their end.
    std::vector<std::uint8_t> results(std::size_t count) const;
    void clear();

private:
    static constexpr std::size_t most_acts = 1u << 20;

    bool opened_ = false;
    std::vector<act> acts_;
    std::vector<std::uint8_t> results_;
};

}  // namespace tamrix::sim
