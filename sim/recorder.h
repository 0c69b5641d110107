// The firmware's recording: port 0 into the memory, sample by sample, while the host waits for a reply.
#pragma once

#include "sim/memory.h"
#include "sim/port_watch.h"
#include "sim/reply_pipe.h"

#include <mutex>
#include <optional>
#include <vector>

namespace tamrix::sim {

/// The time from one sample to the next.
nanoseconds sample_period(int model, int generation);

/// What a recording does when it starts, and what goes wrong with it.
struct recording_plan {
    bool waits = false;  // for the port AND `mask` to be `level`
    std::uint8_t mask = 0, level = 0;
    nanoseconds period{0};
    std::size_t samples = 0;

    bool finds_no_trigger = false, reply_is_lost = false;
    std::uint8_t last_reply = 0xAA;  // that the recording is complete
    std::optional<std::uint8_t> early_reply{};
};

/// Its alarms only search the trigger and reply. Samples are made when the memory is asked for, on the host's thread.
class recorder {
public:
    recorder(std::shared_ptr<clock> time, reply_pipe& replies) : time_{std::move(time)}, replies_{replies} {}
    ~recorder() { stop(); }
    recorder(const recorder&) = delete;
    recorder& operator=(const recorder&) = delete;

    void start(const recording_plan& plan, port_watch watch);
    /// The signals, the pins or the faults changed: from now on it sees this.
    void change(port_watch watch, bool finds_no_trigger);
    /// It never replies after this; what it has recorded stays for store().
    void stop();
    bool running() const;
    /// Writes what it has recorded so far to the memory.
    void store(memory& into);
    /// The reply that has come since the last call, if any.
    std::optional<std::uint8_t> take_reply();

private:
    nanoseconds now() const { return time_->now(); }
    void arm();
    std::optional<microseconds> act();
    void search(nanoseconds until);
    void record(nanoseconds until);
    std::int64_t polls_before(nanoseconds until) const;
    microseconds end() const;
    void reply(std::uint8_t value);

    std::shared_ptr<clock> time_;
    reply_pipe& replies_;
    clock::alarm alarm_ = 0, early_ = 0;

    mutable std::mutex mutex_;  // never held while an alarm is set or cancelled
    recording_plan plan_{};
    port_watch watch_{};
    nanoseconds next_{0};   // poll of the port
    std::size_t left_ = 0;  // samples to make
    bool active_ = false, triggered_ = false;
    std::size_t stored_ = 0;  // of samples_
    std::vector<std::uint8_t> samples_;
    std::optional<std::uint8_t> replied_;
};

}  // namespace tamrix::sim
