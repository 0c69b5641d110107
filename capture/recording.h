// A capture in memory.
#pragma once

#include "capture/sample_period.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tamrix::capture {

inline constexpr std::size_t most_channels = 8;

/// What is known of a capture without its samples.
struct capture_head {
    std::vector<std::string> names;       // one a channel, 1 to 8; UTF-8
    std::optional<sample_period> period;  // none where the file does not say it
};

struct recording {
    capture_head head;
    std::vector<std::uint8_t> samples;  // bit k is channel k; bits without a channel are 0
};

}  // namespace tamrix::capture
