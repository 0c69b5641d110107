// What a person wants to know of a channel: widths, periods, frequency, duty, edges; and where levels are such and
// such.
#pragma once

#include "capture/change_index.h"
#include "capture/sample_period.h"

#include <cstdint>
#include <optional>

namespace tamrix::capture {

/// The stretch of one level that a sample is in.
struct pulse {
    bool high;
    // The sample with the edge; none where the capture begins or ends.
    std::optional<std::uint64_t> begin, end;
    /// The next edge like the one at `begin`.
    std::optional<std::uint64_t> next_begin;

    /// In samples; none where an edge is missing.
    std::optional<std::uint64_t> width() const;
    std::optional<std::uint64_t> period() const;
    /// The part of the period that is high, 0 to 1.
    std::optional<double> duty() const;
};

/// `place` is a sample of the capture, `channel` 0 to 7.
pulse pulse_at(const change_index& index, std::uint64_t place, unsigned channel);

/// What a channel does after one sample up to another one.
struct stretch_measures {
    std::uint64_t edges = 0, rises = 0;
    std::uint64_t first_rise = 0, last_rise = 0;  // samples; where there is a rise
    std::uint64_t high = 0;                       // samples from the first rise to the last

    /// From the first rise to the last, in hertz; none with fewer than two of them.
    std::optional<double> frequency(const sample_period& period) const;
    std::optional<double> duty() const;
};

stretch_measures measures_between(const change_index& index, std::uint64_t from, std::uint64_t to, unsigned channel);

/// Levels that are looked for, as sets of channels.
struct level_pattern {
    std::uint8_t low = 0, high = 0;   // have that level
    std::uint8_t rise = 0, fall = 0;  // have that edge
};

/// The first sample after `place` where the pattern begins to be: it was not at the sample before. Sample 0 is never
/// one.
std::optional<std::uint64_t> next_match(const change_index& index, std::uint64_t place, const level_pattern& pattern);
/// The last such sample before `place`.
std::optional<std::uint64_t> previous_match(const change_index& index, std::uint64_t place,
                                            const level_pattern& pattern);

}  // namespace tamrix::capture
