#include "sim/clock.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tamrix::sim {

namespace {

/// To sleep a shorter time takes longer than that.
constexpr std::chrono::microseconds shortest_sleep{200};

}  // namespace

clock::alarm clock::at(microseconds when, std::function<void()> act)
{
    return repeat(when, [act = std::move(act)]() -> std::optional<microseconds> {
        act();
        return std::nullopt;
    });
}

void virtual_clock::advance(microseconds time)
{
    const microseconds target = now_ + std::max(time, microseconds{0});
    while (!alarms_.empty() && alarms_.begin()->first.first <= target) {
        auto due = alarms_.extract(alarms_.begin());
        now_ = std::max(now_, due.key().first);
        const auto next = due.mapped()();
        if (!next) continue;
        due.key().first = *next;
        alarms_.insert(std::move(due));
    }
    now_ = std::max(now_, target);
}

clock::alarm virtual_clock::repeat(microseconds when, repeated_act act)
{
    alarms_.emplace(std::pair{when, ++last_}, std::move(act));
    return last_;
}

void virtual_clock::cancel(alarm which)
{
    std::erase_if(alarms_, [which](const auto& one) { return one.first.second == which; });
}

wall_clock::wall_clock(double speed) : speed_{speed}
{
    if (!(speed > 0)) throw std::invalid_argument{"the speed of a clock must be above 0"};
}

wall_clock::~wall_clock()
{
    {
        const std::lock_guard lock{mutex_};
        ending_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
}

microseconds wall_clock::now() const
{
    const std::chrono::duration<double, std::micro> passed = wall::now() - start_;
    return microseconds{static_cast<std::int64_t>(passed.count() * speed_)};
}

wall_clock::wall::time_point wall_clock::wall_time(microseconds when) const
{
    const std::chrono::duration<double, std::micro> passed{static_cast<double>(when.count()) / speed_};
    return start_ + std::chrono::duration_cast<wall::duration>(passed);
}

void wall_clock::advance(microseconds time)
{
    const microseconds target = now() + time;
    // A short wait is spun away; a sleep ends a moment early on some systems.
    const bool sleeps = wall_time(target) - wall::now() > shortest_sleep;
    while (now() < target) {
        if (sleeps) std::this_thread::sleep_until(wall_time(target));
    }
}

clock::alarm wall_clock::repeat(microseconds when, repeated_act act)
{
    alarm made = 0;
    {
        const std::lock_guard lock{mutex_};
        if (!thread_.joinable()) thread_ = std::thread{[this] { run_alarms(); }};
        made = ++last_;
        alarms_.emplace(std::pair{when, made}, std::move(act));
    }
    changed_.notify_all();
    return made;
}

void wall_clock::cancel(alarm which)
{
    const std::lock_guard lock{mutex_};
    std::erase_if(alarms_, [which](const auto& one) { return one.first.second == which; });
}

void wall_clock::run_alarms()
{
    std::unique_lock lock{mutex_};
    while (!ending_) {
        if (alarms_.empty()) {
            changed_.wait(lock);
            continue;
        }
        const auto due = wall_time(alarms_.begin()->first.first);
        if (wall::now() < due) {
            changed_.wait_until(lock, due);
            continue;
        }
        auto next = alarms_.extract(alarms_.begin());
        const auto again = next.mapped()();
        if (!again) continue;
        next.key().first = *again;
        alarms_.insert(std::move(next));
        changed_.wait_for(lock, shortest_sleep);  // so that whoever cancels an alarm gets the lock
    }
}

}  // namespace tamrix::sim
