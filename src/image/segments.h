// Which addresses something fills.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tamrix {

/// Bytes that follow one another. Addresses are in bytes, also where a file counts words.
struct memory_segment {
    std::uint64_t first;   // address of the first byte
    std::uint64_t length;  // in bytes

    /// The address after the last byte.
    std::uint64_t end() const { return first + length; }
    bool operator==(const memory_segment&) const = default;
};

/// In the order of their addresses; none touches another.
class segment_list {
public:
    /// Adds bytes. Returns those of them that were there before, the lowest stretch only; none if all are new.
    std::optional<memory_segment> add(memory_segment added)
    {
        if (added.length == 0) return std::nullopt;
        if (!held_.empty() && held_.back().end() == added.first) {  // as most records do
            held_.back().length += added.length;
            return std::nullopt;
        }
        return insert(added);
    }
    std::span<const memory_segment> all() const { return held_; }
    std::uint64_t bytes() const;

private:
    std::optional<memory_segment> insert(memory_segment added);

    std::vector<memory_segment> held_;
};

/// The lowest stretch that both have; none if they have nothing in common.
std::optional<memory_segment> first_common(const segment_list& one, const segment_list& other);
/// What `from` has and `other` has not.
segment_list without(const segment_list& from, const segment_list& other);

/// Takes what a file holds, in the order of the file.
class data_taker {
public:
    virtual ~data_taker() = default;
    /// May throw what ends the reading.
    virtual void take(std::uint64_t address, std::span<const std::uint8_t> bytes) = 0;
};

}  // namespace tamrix
