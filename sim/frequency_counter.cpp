#include "sim/frequency_counter.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tamrix::sim {

namespace {

constexpr std::uint8_t pin_23 = 4;  // of port 0
constexpr int counts_in_a_second = 5;
constexpr microseconds count_time{1'000'000 / counts_in_a_second};

}  // namespace

void frequency_counter::start(port_watch watch, bool hears_nothing)
{
    stop();
    {
        const std::lock_guard lock{mutex_};
        watch_ = std::move(watch);
        hears_nothing_ = hears_nothing;
        counted_to_ = time_->now();
        was_high_ = (watch_.look(counted_to_).port & pin_23) != 0;
        counts_.clear();
    }
    alarm_ = time_->repeat(time_->now() + count_time, [this] { return act(); });
}

void frequency_counter::change(port_watch watch, bool hears_nothing)
{
    if (running()) start(std::move(watch), hears_nothing);
}

void frequency_counter::stop()
{
    time_->cancel(std::exchange(alarm_, 0));
    const std::lock_guard lock{mutex_};
    result_ = {};
}

std::array<std::uint8_t, 3> frequency_counter::result() const
{
    const std::lock_guard lock{mutex_};
    return result_;
}

int frequency_counter::count_edges(nanoseconds until)
{
    int edges = 0;
    for (nanoseconds at = counted_to_; at <= until;) {
        const auto seen = watch_.look(at);
        const bool is_high = (seen.port & pin_23) != 0;
        if (is_high && !was_high_) ++edges;
        was_high_ = is_high;
        at = seen.until;
    }
    counted_to_ = until;
    return edges;
}

std::optional<microseconds> frequency_counter::act()
{
    const std::lock_guard lock{mutex_};
    microseconds until = std::chrono::floor<microseconds>(counted_to_) + count_time;
    // A computer that is too slow for the clock's speed leaves out what it has missed.
    if (const microseconds late = time_->now() - until; late > count_time) {
        until += late;
        counted_to_ += late;
        was_high_ = (watch_.look(counted_to_).port & pin_23) != 0;
    }
    const int edges = count_edges(until);
    counts_.push_back(hears_nothing_ ? 0 : edges);
    if (counts_.size() > counts_in_a_second) counts_.pop_front();
    const int sum = std::accumulate(counts_.begin(), counts_.end(), 0), counts = static_cast<int>(counts_.size());
    const int hertz = (sum * counts_in_a_second + counts / 2) / counts;
    result_ = {static_cast<std::uint8_t>(hertz & 0xFF), static_cast<std::uint8_t>(hertz >> 8 & 0xFF),
               static_cast<std::uint8_t>(hertz >> 16 & 0xFF)};
    replies_.put_by_itself(result_);
    return until + count_time;
}

}  // namespace tamrix::sim
