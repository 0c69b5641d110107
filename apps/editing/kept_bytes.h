// Bytes that are kept apart from the buffer, each for its address: former bytes of the history, bytes that are not
// shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tamrix::editing {

/// Some bytes, unchanging. If all have one value, they take no memory of their own.
class kept_piece {
public:
    explicit kept_piece(std::span<const std::uint8_t> bytes);
    kept_piece(std::uint8_t value, std::size_t length) : length_{length}, value_{value} {}

    std::size_t length() const { return length_; }
    bool is_one_value() const { return bytes_ == nullptr; }
    /// Of all bytes of a piece of one value.
    std::uint8_t value() const { return value_; }
    /// How many bytes it takes beside itself.
    std::size_t memory() const { return is_one_value() ? 0 : length_ + allocation_bytes; }
    bool equals(std::span<const std::uint8_t> others) const;
    /// Its bytes from `first` on, `target.size()` of them.
    void copy_to(std::span<std::uint8_t> target, std::size_t first = 0) const;
    /// Exchanges its bytes, which are not of one value, with those of `target`, as many.
    void swap_with(std::span<std::uint8_t> target);
    void grow(std::size_t length) { length_ += length; }

    /// What the system adds to each piece of memory, about.
    static constexpr std::size_t allocation_bytes = 16;

private:
    std::size_t length_;
    std::unique_ptr<std::uint8_t[]> bytes_{};
    std::uint8_t value_ = 0;
};

bool is_one_value(std::span<const std::uint8_t> bytes);

class kept_bytes {
public:
    struct run {
        std::size_t address;
        kept_piece piece;
        std::size_t end() const { return address + piece.length(); }
    };
    /// What is not of one value is in runs of at most this length, which end at its multiples.
    static constexpr std::size_t block_bytes = 4096;

    /// By address; no two overlap.
    const std::vector<run>& runs() const { return runs_; }
    bool empty() const { return runs_.empty(); }
    /// After the last byte.
    std::size_t end() const { return runs_.empty() ? 0 : runs_.back().end(); }
    /// How many bytes it takes beside itself.
    std::size_t memory() const { return pieces_memory_ + runs_.capacity() * sizeof(run); }

    /// `address` is at or after end().
    void add(std::size_t address, std::span<const std::uint8_t> bytes);
    void add(run added);
    void add(kept_bytes&& others);
    /// Each byte for the one at its address in `buffer`, which has all of these addresses.
    void exchange(std::span<std::uint8_t> buffer);
    /// As far as `buffer` reaches.
    void copy_to(std::span<std::uint8_t> buffer) const;
    /// The bytes from `address` on; those that are not kept leave `target` as it is.
    void read(std::size_t address, std::span<std::uint8_t> target) const;
    /// Takes what is from `address` on away.
    kept_bytes take_from(std::size_t address);
    /// Where bytes are kept without a gap; the runs one by one are shorter.
    template <class F>
    void visit_ranges(F&& visit) const
    {
        for (std::size_t i = 0; i < runs_.size();) {
            const std::size_t first = runs_[i].address;
            std::size_t end = first;
            for (; i < runs_.size() && runs_[i].address == end; ++i) end = runs_[i].end();
            visit(first, end);
        }
    }
    void release_spare_memory() { runs_.shrink_to_fit(); }

private:
    friend kept_bytes differences(kept_bytes&& former, std::span<const std::uint8_t> now);
    std::vector<run> runs_{};
    std::size_t pieces_memory_ = 0;
};

/// Those of `former` that differ from `now`, and a few beside them.
kept_bytes differences(kept_bytes&& former, std::span<const std::uint8_t> now);

}  // namespace tamrix::editing
