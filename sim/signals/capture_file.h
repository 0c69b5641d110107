// A raw capture that is played again: one byte a sample, bit 0 is P21.
#pragma once

#include "sim/signals/signal.h"

#include <filesystem>
#include <vector>

namespace tamrix::sim {

class capture final : public signal {
public:
    /// Plays `samples` (not empty), `period` each. After the last one it begins again, or rests at it.
    capture(std::uint8_t pins, std::vector<std::uint8_t> samples, nanoseconds period, bool again)
        : pins_{pins}, samples_{std::move(samples)}, period_{period}, again_{again}
    {}
    glimpse look(nanoseconds when) const override;

private:
    std::uint8_t pins_;
    std::vector<std::uint8_t> samples_;
    nanoseconds period_;
    bool again_;
};

/// At most so many samples are taken from a file.
inline constexpr std::size_t most_capture_bytes = std::size_t{1} << 26;

/// The samples of a file. Throws std::invalid_argument with the reason if it cannot be read, is empty or too long.
std::vector<std::uint8_t> samples_of_file(const std::filesystem::path& file);

}  // namespace tamrix::sim
