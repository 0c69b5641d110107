// What a programmer does with signals at its pins: the recording, the counter, the generator, and levels for its
// inputs.
#pragma once

#include "sim/frequency_counter.h"
#include "sim/machine.h"
#include "sim/recorder.h"
#include "sim/signals/signal_set.h"
#include "sim/wave_generator.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tamrix::sim {

/// The time of all signals begins at the first look after a reset: the start of a recording, of the counter or of the
/// generator, or a read of the pins. Chips among the signals start anew then.
class instruments {
public:
    /// The parts of the programmer that they work with; all of them live longer.
    struct surroundings {
        int model, generation;
        std::shared_ptr<clock> time;
        journal& log;
        fault_set& faults;
        machine& hardware;
        memory& ram;
        reply_pipe& replies;
    };
    instruments(const surroundings& with, part_shelf chips);

    const signal_set& signals() const { return signals_; }
    void set_signals(signal_set wanted);
    /// A fault was added or removed, or something else is in the socket.
    void update();
    /// Everything ends; the memory keeps what was recorded.
    void reset();

    /// Brings the levels at the pins up to date; `begins`: it is a look at the pins, not only a moment.
    void look(bool begins);

    /// Writes what has been recorded to the memory. Call this before anything reads that.
    void store();
    /// Start and stop of a recording.
    void take_frame(std::span<const std::uint8_t> frame);

    /// What was written to a control register.
    void control(std::uint8_t address, std::uint8_t value);
    /// What a control register reads; none if it is no register of theirs now.
    std::optional<std::uint8_t> read_control(std::uint8_t address);

private:
    void begin();
    signal_walk walk() const;
    port_watch watch() const;
    void restart();
    void start_recording(std::uint8_t mode, std::uint8_t mask, std::uint8_t level);
    void start_generator(wave_divider divider);
    void look_for_conflict();

    surroundings with_;
    signal_set signals_;
    recorder recorder_;
    frequency_counter counter_;
    std::optional<nanoseconds> origin_;  // none: nobody has looked since the reset
    signal_walk live_{};                 // for levels at the pins
    bool stepwise_ = false;
    double running_hertz_ = 0;  // of the generator now
    double last_hertz_ = 0;     // of the last wave that it made, which leads keep
    std::optional<std::uint8_t> middle_register_, high_register_;
    std::array<std::uint8_t, 3> latched_{};
};

}  // namespace tamrix::sim
