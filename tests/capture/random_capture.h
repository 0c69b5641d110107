// Captures that look random, of every density of edges.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace tamrix::tests {

/// Bits of channels from `channels` on are 0.
inline std::vector<std::uint8_t> random_capture(std::mt19937& random, std::size_t length, unsigned channels = 8)
{
    std::vector<std::uint8_t> samples(length);
    const unsigned still = 1u << random() % 14;  // one in so many samples has an edge
    std::uint8_t level = 0;
    for (auto& sample : samples) {
        if (random() % still == 0) level ^= static_cast<std::uint8_t>(random());
        sample = level & ((1u << channels) - 1);
    }
    return samples;
}

}  // namespace tamrix::tests
