// The script of a vector run: steps that wait until they are started, and the bytes that they read.
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

    /// A script frame arrived. It fetches the current results; the next step begins a new script.
    void open() { opened_ = true; }
    /// False if there is no room for it.
    bool enter(const act& one);
    /// Plays the steps since the last start; returns the time that the hardware needs for them.
    microseconds start(machine& hardware);
    /// `count` bytes of the results, 0 after their end.
    std::vector<std::uint8_t> results(std::size_t count) const;
    void clear();

private:
    static constexpr std::size_t most_acts = 1u << 20;

    bool opened_ = false;
    std::vector<act> acts_;
    std::vector<std::uint8_t> results_;
};

}  // namespace tamrix::sim
