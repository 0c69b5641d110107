// The time of a simulated programmer: virtual, advanced by its user, or real.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace tamrix::sim {

using microseconds = std::chrono::microseconds;

class clock {
public:
    using alarm = std::uint64_t;

    virtual ~clock() = default;
    /// Since the clock was created.
    virtual microseconds now() const = 0;
    /// Lets time pass, as a blocking wait does. A negative time counts as 0.
    virtual void advance(microseconds time) = 0;
    /// Runs `act` once at the time `when`, in the clock's own context. `act` must not use the clock's alarms.
    alarm at(microseconds when, std::function<void()> act);
    /// What an act that runs more than once returns: when it runs next. None: never again.
    using repeated_act = std::function<std::optional<microseconds>()>;
    virtual alarm repeat(microseconds when, repeated_act act) = 0;
    /// After this the act of `which` is not running and never runs.
    virtual void cancel(alarm which) = 0;
};

/// Stops until it is advanced; alarms run inside advance(), in their order. For one thread.
class virtual_clock final : public clock {
public:
    microseconds now() const override { return now_; }
    void advance(microseconds time) override;
    alarm repeat(microseconds when, repeated_act act) override;
    void cancel(alarm which) override;

private:
    microseconds now_{0};
    alarm last_ = 0;
    std::map<std::pair<microseconds, alarm>, repeated_act> alarms_;
};

/// Runs `speed` times as fast as real time. Alarms run on a thread of its own.
class wall_clock final : public clock {
public:
    explicit wall_clock(double speed = 1);
    ~wall_clock() override;
    wall_clock(const wall_clock&) = delete;
    wall_clock& operator=(const wall_clock&) = delete;

    microseconds now() const override;
    void advance(microseconds time) override;
    alarm repeat(microseconds when, repeated_act act) override;
    void cancel(alarm which) override;

private:
    using wall = std::chrono::steady_clock;
    wall::time_point wall_time(microseconds when) const;
    void run_alarms();

    const double speed_;
    const wall::time_point start_ = wall::now();
    std::mutex mutex_;  // held while an act runs, so that cancel() can wait for it
    std::condition_variable changed_;
    alarm last_ = 0;
    std::map<std::pair<microseconds, alarm>, repeated_act> alarms_;
    bool ending_ = false;
    std::thread thread_;  // started by the first alarm
};

}  // namespace tamrix::sim
