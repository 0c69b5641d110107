#include "capture/measures.h"

#include <algorithm>

namespace tamrix::capture {

std::optional<std::uint64_t> pulse::width() const { return begin && end ? std::optional{*end - *begin} : std::nullopt; }

std::optional<std::uint64_t> pulse::period() const
{
    return begin && next_begin ? std::optional{*next_begin - *begin} : std::nullopt;
}

std::optional<double> pulse::duty() const
{
    if (!width() || !period()) return std::nullopt;
    const double part = static_cast<double>(*width()) / static_cast<double>(*period());
    return high ? part : 1 - part;
}

pulse pulse_at(const change_index& index, std::uint64_t place, unsigned channel)
{
    const auto set = static_cast<std::uint8_t>(1u << channel);
    pulse found{
        (index.samples()[place] & set) != 0, index.previous_edge(place + 1, set), index.next_edge(place, set), {}};
    if (found.end) found.next_begin = index.next_edge(*found.end, set);
    return found;
}

std::optional<double> stretch_measures::frequency(const sample_period& period) const
{
    if (rises < 2) return std::nullopt;
    return static_cast<double>(rises - 1) / (static_cast<double>(last_rise - first_rise) * period.seconds());
}

std::optional<double> stretch_measures::duty() const
{
    if (rises < 2) return std::nullopt;
    return static_cast<double>(high) / static_cast<double>(last_rise - first_rise);
}

stretch_measures measures_between(const change_index& index, std::uint64_t from, std::uint64_t to, unsigned channel)
{
    const auto set = static_cast<std::uint8_t>(1u << channel);
    stretch_measures found;
    std::uint64_t high = 0;  // from the first rise to the last fall
    for (auto edge = index.next_edge(from, set); edge && *edge <= to; edge = index.next_edge(*edge, set)) {
        ++found.edges;
        if (index.samples()[*edge] & set) {
            if (found.rises++ == 0) found.first_rise = *edge;
            found.last_rise = *edge;
            found.high = high;
        } else if (found.rises > 0) {
            high += *edge - found.last_rise;
        }
    }
    return found;
}

namespace {

bool is_match(const change_index& index, std::uint64_t place, const level_pattern& pattern)
{
    const unsigned now = index.samples()[place], before = place > 0 ? index.samples()[place - 1] : now;
    return !(now & pattern.low) && (now & pattern.high) == pattern.high &&
           (~before & now & pattern.rise) == pattern.rise && (before & ~now & pattern.fall) == pattern.fall;
}

bool begins_at(const change_index& index, std::uint64_t place, const level_pattern& pattern)
{
    return is_match(index, place, pattern) && !is_match(index, place - 1, pattern);
}

std::uint8_t channels_of(const level_pattern& pattern)
{
    return pattern.low | pattern.high | pattern.rise | pattern.fall;
}

}  // namespace

std::optional<std::uint64_t> next_match(const change_index& index, std::uint64_t place, const level_pattern& pattern)
{
    const std::uint8_t channels = channels_of(pattern);
    auto edge = index.next_edge(place, channels);
    while (edge && !begins_at(index, *edge, pattern)) edge = index.next_edge(*edge, channels);
    return edge;
}

std::optional<std::uint64_t> previous_match(const change_index& index, std::uint64_t place,
                                            const level_pattern& pattern)
{
    const std::uint8_t channels = channels_of(pattern);
    auto edge = index.previous_edge(place, channels);
    while (edge && !begins_at(index, *edge, pattern)) edge = index.previous_edge(*edge, channels);
    return edge;
}

}  // namespace tamrix::capture
