#include "sim/clock.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tamrix::sim {

void virtual_clock::advance(microseconds time)
{
    const microseconds target = now_ + std::max(time, microseconds{0});
    while (!alarms_.empty() && alarms_.begin()->first.first <= target) {
        auto due = alarms_.extract(alarms_.begin());
        now_ = std::max(now_, due.key().first);
        due.mapped()();
    }
    now_ = std::max(now_, target);
}

clock::alarm virtual_clock::at(microseconds when, std::function<void()> act)
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
    while (now() < target) std::this_thread::sleep_until(wall_time(target));  // which some systems end a moment early
}

clock::alarm wall_clock::at(microseconds when, std::function<void()> act)
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
        const auto next = alarms_.extract(alarms_.begin());
        next.mapped()();
    }
}

}  // namespace tamrix::sim
