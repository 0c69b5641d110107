// The counter of a programmer: the frequency at pin 23, in hertz, refreshed by itself.
#pragma once

#include "sim/port_watch.h"
#include "sim/reply_pipe.h"

#include <array>
#include <deque>
#include <mutex>

namespace tamrix::sim {

/// Counts rising edges for a fifth of a second at a time. The result is the sum of the last five counts; until there
/// are five, what the sum would be if it went on like that.
class frequency_counter {
public:
    frequency_counter(std::shared_ptr<clock> time, reply_pipe& replies) : time_{std::move(time)}, replies_{replies} {}
    ~frequency_counter() { stop(); }
    frequency_counter(const frequency_counter&) = delete;
    frequency_counter& operator=(const frequency_counter&) = delete;

    /// `hears_nothing`: it counts no edge. Each result also goes to the host by itself, as three bytes.
    void start(port_watch watch, bool hears_nothing);
    /// The signals or the pins changed: from now on this is what it sees.
    void change(port_watch watch, bool hears_nothing);
    void stop();
    bool running() const { return alarm_ != 0; }
    /// The last result, lowest byte first.
    std::array<std::uint8_t, 3> result() const;

private:
    std::optional<microseconds> act();
    int count_edges(nanoseconds until);

    std::shared_ptr<clock> time_;
    reply_pipe& replies_;
    clock::alarm alarm_ = 0;

    mutable std::mutex mutex_;  // never held while an alarm is set or cancelled
    port_watch watch_{};
    bool hears_nothing_ = false, was_high_ = false;
    nanoseconds counted_to_{0};
    std::deque<int> counts_;
    std::array<std::uint8_t, 3> result_{};
};

}  // namespace tamrix::sim
