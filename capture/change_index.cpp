#include "capture/change_index.h"

#include <algorithm>
#include <cstring>

namespace tamrix::capture {

namespace {

constexpr std::size_t step = 64;

std::uint64_t eight_bytes(const std::uint8_t* at)
{
    std::uint64_t value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

std::uint8_t any_byte(std::uint64_t bytes)
{
    bytes |= bytes >> 32;
    bytes |= bytes >> 16;
    return static_cast<std::uint8_t>(bytes | bytes >> 8);
}

/// Changes of 64 samples, the first of which has one before it.
std::uint8_t changes_of_step(const std::uint8_t* samples)
{
    std::uint64_t all = 0;
    for (std::size_t i = 0; i < step; i += 8) all |= eight_bytes(samples + i) ^ eight_bytes(samples + i - 1);
    return any_byte(all);
}

}  // namespace

change_index::change_index(std::span<const std::uint8_t> samples) : samples_{samples}
{
    auto& lowest = changes_[0];
    lowest.resize((samples.size() + step - 1) / step);
    for (std::size_t block = 0; block < lowest.size(); ++block) {
        const std::size_t begin = block * step;
        if (begin > 0 && begin + step <= samples.size()) {
            lowest[block] = changes_of_step(samples.data() + begin);
        } else {
            for (std::size_t i = std::max<std::size_t>(begin, 1); i < std::min(begin + step, samples.size()); ++i) {
                lowest[block] |= change_at(i);
            }
        }
    }
    for (std::size_t level = 1; level < levels; ++level) {
        const auto& below = changes_[level - 1];
        auto& here = changes_[level];
        here.resize((below.size() + step - 1) / step);
        for (std::size_t i = 0; i < below.size(); ++i) here[i / step] |= below[i];
    }
}

std::uint64_t change_index::down_to_first(std::size_t level, std::uint64_t number, std::uint8_t channels) const
{
    while (level > 0) {
        --level;
        number = level == 0 && number == 0 ? 1 : number << bits_of_step;
        while (!(entry(level, number) & channels)) ++number;
    }
    return number;
}

std::uint64_t change_index::down_to_last(std::size_t level, std::uint64_t number, std::uint8_t channels) const
{
    while (level > 0) {
        --level;
        number = std::min(((number + 1) << bits_of_step), entries(level)) - 1;
        while (!(entry(level, number) & channels)) --number;
    }
    return number;
}

std::optional<std::uint64_t> change_index::next_edge(std::uint64_t place, std::uint8_t channels) const
{
    if (place >= samples_.size()) return std::nullopt;
    std::uint64_t number = place + 1;
    for (std::size_t level = 0;; ++level) {
        // To the end of the entry of the next level up; the topmost level has none.
        const std::uint64_t end =
            level == levels ? entries(level) : std::min(entries(level), (number + step - 1) / step * step);
        for (; number < end; ++number) {
            if (entry(level, number) & channels) return down_to_first(level, number, channels);
        }
        if (number >= entries(level)) return std::nullopt;
        number >>= bits_of_step;
    }
}

std::optional<std::uint64_t> change_index::previous_edge(std::uint64_t place, std::uint8_t channels) const
{
    std::uint64_t number = std::min<std::uint64_t>(place, samples_.size());  // one after the first one to look at
    for (std::size_t level = 0;; ++level) {
        const std::uint64_t lowest = level == 0 ? 1 : 0;
        const std::uint64_t end = level == levels ? lowest : std::max(lowest, number / step * step);
        for (; number > end; --number) {
            if (entry(level, number - 1) & channels && number - 1 >= lowest) {
                return down_to_last(level, number - 1, channels);
            }
        }
        if (number <= lowest) return std::nullopt;
        number >>= bits_of_step;
    }
}

std::uint8_t change_index::changed(std::uint64_t from, std::uint64_t to) const
{
    if (samples_.empty()) return 0;
    std::uint64_t first = from + 1, end = std::min<std::uint64_t>(to, samples_.size() - 1) + 1;
    if (from >= end) return 0;
    std::uint8_t all = 0;
    for (std::size_t level = 0; first < end; ++level) {
        for (; first < end && (level == levels || first % step != 0); ++first) all |= entry(level, first);
        for (; end > first && end % step != 0; --end) all |= entry(level, end - 1);
        first >>= bits_of_step;
        end >>= bits_of_step;
    }
    return all;
}

std::size_t change_index::memory() const
{
    std::size_t all = sizeof *this;
    for (const auto& level : changes_) all += level.capacity();
    return all;
}

}  // namespace tamrix::capture
