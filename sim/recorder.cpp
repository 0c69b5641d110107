#include "sim/recorder.h"

#include <algorithm>
#include <span>
#include <utility>

namespace tamrix::sim {

namespace {

/// A trigger is searched so far ahead at once.
constexpr microseconds search_span{100'000};
constexpr microseconds early_after{10'000};

}  // namespace

nanoseconds sample_period(int model, int generation)
{
    constexpr int new_generation = 17;
    switch (model) {
    case 2:
    case 3:
    case 4:
    case 9:
    case 10:
    case 13:
    case 14: return nanoseconds{generation == new_generation ? 3500 : 3800};
    case 5:
    case 6:
    case 7:
    case 8:
    case 15:
    case 16:
    case 17:
    case 18:
    case 19: return nanoseconds{4700};
    default: return nanoseconds{3400};
    }
}

void recorder::start(const recording_plan& plan, port_watch watch)
{
    stop();
    {
        const std::lock_guard lock{mutex_};
        plan_ = plan;
        watch_ = std::move(watch);
        next_ = now();
        left_ = plan.samples;
        active_ = true;
        triggered_ = !plan.waits;
        stored_ = 0;
        samples_.clear();
        samples_.reserve(plan.samples);
        replied_.reset();
    }
    arm();
    if (plan.early_reply)
        early_ = time_->at(time_->now() + early_after, [this, value = *plan.early_reply] {
            const std::lock_guard lock{mutex_};
            reply(value);
        });
}

void recorder::arm()
{
    alarm_ = time_->repeat(time_->now(), [this] { return act(); });
}

void recorder::change(port_watch watch, bool finds_no_trigger)
{
    if (!running()) return;
    time_->cancel(std::exchange(alarm_, 0));
    {
        const std::lock_guard lock{mutex_};
        record(now());
        watch_ = std::move(watch);
        plan_.finds_no_trigger = finds_no_trigger;
        // A trigger that was only expected may not come now.
        if (plan_.waits && samples_.empty()) triggered_ = false;
        if (!triggered_) next_ = now();
    }
    arm();
}

void recorder::stop()
{
    time_->cancel(std::exchange(alarm_, 0));
    time_->cancel(std::exchange(early_, 0));
    const std::lock_guard lock{mutex_};
    if (active_) record(now());
    active_ = false;
}

bool recorder::running() const
{
    const std::lock_guard lock{mutex_};
    return active_;
}

void recorder::store(memory& into)
{
    const std::lock_guard lock{mutex_};
    if (active_) record(now());
    if (stored_ == samples_.size()) return;
    into.put(stored_, std::span{samples_}.subspan(stored_));
    stored_ = samples_.size();
}

std::optional<std::uint8_t> recorder::take_reply()
{
    const std::lock_guard lock{mutex_};
    return std::exchange(replied_, std::nullopt);
}

/// How many polls are due before this time. Fast signals leave one, for which a division takes too long.
std::int64_t recorder::polls_before(nanoseconds until) const
{
    if (until <= next_) return 0;
    const nanoseconds left = until - next_;
    return left <= plan_.period ? 1 : (left - nanoseconds{1}) / plan_.period + 1;
}

void recorder::search(nanoseconds until)
{
    while (!triggered_ && !plan_.finds_no_trigger && next_ < until) {
        const auto seen = watch_.look(next_);
        if ((seen.port & plan_.mask) == plan_.level) {
            triggered_ = true;
        } else {
            next_ += polls_before(std::min(seen.until, until)) * plan_.period;
        }
    }
}

void recorder::record(nanoseconds until)
{
    while (triggered_ && left_ > 0 && next_ < until) {
        const auto seen = watch_.look(next_);
        const auto due = static_cast<std::uint64_t>(polls_before(std::min(seen.until, until)));
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(due, left_));
        samples_.insert(samples_.end(), count, seen.port);
        left_ -= count;
        next_ += static_cast<std::int64_t>(count) * plan_.period;
    }
}

/// When the last sample has been taken; rounded up to the clock's step.
microseconds recorder::end() const
{
    return std::chrono::ceil<microseconds>(next_ + static_cast<std::int64_t>(left_) * plan_.period);
}

std::optional<microseconds> recorder::act()
{
    const std::lock_guard lock{mutex_};
    const microseconds time = time_->now();
    if (!triggered_) search(time + search_span);
    if (!triggered_) return plan_.finds_no_trigger ? std::nullopt : std::optional{time + search_span};
    if (time < end()) return end();
    reply(plan_.last_reply);
    return std::nullopt;
}

void recorder::reply(std::uint8_t value)
{
    if (plan_.reply_is_lost) return;
    replied_ = value;
    replies_.put_by_itself({&value, 1});
}

}  // namespace tamrix::sim
