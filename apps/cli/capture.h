// Raw samples of the logic analyzer in a file: a byte a sample, bit 0 is P21, bit 7 is P28.
#pragma once

#include "cli/console.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tamrix::cli {

/// Throws file_error for a file that cannot be read, and command_error for one that is empty or longer than any
/// recording. A length that is no whole number of banks is noted.
std::vector<std::uint8_t> samples_of(const std::string& path, console& con);

/// A part of the samples, `count` from `from` on; all of them exist.
struct capture_view {
    std::span<const std::uint8_t> samples;
    std::int32_t from, count;
    double period_us;  // from one sample to the next
};

/// What a channel did in a recording.
struct channel_facts {
    std::int32_t edges = 0;
    bool begins_high = false;
    double high_part = 0;  // of all samples, 0 to 1
    // Of the whole periods, from the first rise to the last; none if there are none.
    std::optional<double> samples_a_period{};
    std::optional<double> duty{};  // 0 to 1
};

/// Of bit 0 to 7 of samples that are not empty.
channel_facts facts_of(std::span<const std::uint8_t> samples, int bit);

}  // namespace tamrix::cli
