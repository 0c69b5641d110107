// All signals that a person put on, each from a line of text; docs/simulator.md lists the kinds.
#pragma once

#include "sim/signals/signal_walk.h"
#include "sim/signals/signal_words.h"

#include <string_view>

namespace tamrix::sim {

class signal_set {
public:
    /// `chips`: where the chips of lines like "chip 7490 ..." are found. None: such lines are refused.
    explicit signal_set(part_shelf chips = {}) : chips_{std::move(chips)} {}
    /// For the lines to come.
    void take_chips_from(part_shelf chips) { chips_ = std::move(chips); }

    /// Adds one signal: "P21 square 1000 duty 25 phase 90", "P21..P24 counter 10000", "P22 pulse 0.001 0.002",
    /// "P23 uart 9600 \"Hello\"", "P24 P25 i2c 100000 write 50 01 02", "P21 P22 P23 P24 spi 1000000 send 9F",
    /// "P21..P28 noise 1000 start 7", "P21..P28 file capture.bin period 3.4", "P21 high", "P21 low",
    /// "chip 7490 14=P21 12=P22 1=12 2=low", "lead 23 P21". Throws signal_error, and then nothing is added.
    void add(std::string_view text);
    bool empty() const { return sources_.empty() && chip_plans_.empty() && leads_ == 0; }

    /// The pins that signals other than chips drive, and those to which a lead comes, as masks: bit 0 is P21.
    std::uint8_t pins() const { return pins_; }
    std::uint8_t leads() const { return leads_; }
    /// From time 0 on, together with `more`.
    signal_walk walk(std::vector<std::shared_ptr<const signal>> more = {}) const;

private:
    void add_lead(signal_words& words);

    part_shelf chips_;
    std::vector<std::shared_ptr<const signal>> sources_;
    std::vector<chip_plan> chip_plans_;
    std::uint8_t pins_ = 0, leads_ = 0;
};

}  // namespace tamrix::sim
