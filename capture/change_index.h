// Where the channels of a capture change, found in the same short time anywhere in it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tamrix::capture {

/// An edge is at sample i > 0 if a channel differs there from sample i - 1. `channels` is always a set of them: bit k
/// is channel k. The index takes a sixty-third of the samples' memory.
class change_index {
public:
    /// The samples have to outlive it, unchanged.
    explicit change_index(std::span<const std::uint8_t> samples);

    std::span<const std::uint8_t> samples() const { return samples_; }
    /// The first edge of one of the channels after `place`, any number.
    std::optional<std::uint64_t> next_edge(std::uint64_t place, std::uint8_t channels) const;
    /// The last edge before `place`.
    std::optional<std::uint64_t> previous_edge(std::uint64_t place, std::uint8_t channels) const;
    /// The channels that have an edge after sample `from`, up to `to`: those that are not one level from here to there.
    std::uint8_t changed(std::uint64_t from, std::uint64_t to) const;
    /// Bytes of memory of its own.
    std::size_t memory() const;

private:
    static constexpr std::size_t levels = 4;
    static constexpr unsigned bits_of_step = 6;  // 64 of one level are one of the next

    std::uint8_t change_at(std::uint64_t sample) const { return samples_[sample] ^ samples_[sample - 1]; }
    /// What changes in the entry of a level; level 0 has the samples themselves.
    std::uint8_t entry(std::size_t level, std::uint64_t number) const
    {
        return level == 0 ? change_at(number) : changes_[level - 1][number];
    }
    std::uint64_t entries(std::size_t level) const { return level == 0 ? samples_.size() : changes_[level - 1].size(); }
    std::uint64_t down_to_first(std::size_t level, std::uint64_t number, std::uint8_t channels) const;
    std::uint64_t down_to_last(std::size_t level, std::uint64_t number, std::uint8_t channels) const;

    std::span<const std::uint8_t> samples_;
    std::array<std::vector<std::uint8_t>, levels> changes_;  // of 64, 4096, .. samples
};

}  // namespace tamrix::capture
