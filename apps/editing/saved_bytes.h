// What the bytes were when they were last saved.
#pragma once

#include "editing/kept_bytes.h"

#include <map>

namespace tamrix::editing {

/// All bytes of a document: those in the buffer, then those that the buffer is too small to show.
struct all_bytes {
    std::span<const std::uint8_t> shown{};
    const kept_bytes* hidden = nullptr;
    std::size_t length() const { return hidden->empty() ? shown.size() : hidden->end(); }
    void read(std::size_t address, std::span<std::uint8_t> target) const;
};

/// Keeps the saved bytes of just those blocks that differ from them now, so nothing is kept when all is as it was
/// saved.
class saved_bytes {
public:
    bool empty() const { return blocks_.empty(); }
    std::size_t memory() const { return memory_; }
    void clear();

    /// To be called after each change: `former` are the bytes that were there, `now` is all of it after the change.
    void follow(const kept_bytes& former, const all_bytes& now);
    /// For each of the addresses from `address` on whether its byte differs.
    std::vector<bool> differences(std::size_t address, std::span<const std::uint8_t> shown) const;

    /// The bytes from address `end` on are about to go: takes what is kept of them away. `now` still has them.
    kept_bytes take_from(std::size_t end, const all_bytes& now);
    /// They have come back: `saved` is what take_from() returned.
    void put_back(const kept_bytes& saved, const all_bytes& now);

private:
    static constexpr std::size_t block_bytes = 1024;
    using block_map = std::map<std::size_t, kept_piece>;
    struct open_block;
    enum class takes : std::uint8_t { unknown_bytes, all_bytes };
    void merge(const kept_bytes& bytes, const all_bytes& now, takes which);
    void open(open_block& block, std::size_t number, const all_bytes& now) const;
    void close(const open_block& block);
    void store(std::size_t number, std::span<const std::uint8_t> saved, std::span<const std::uint8_t> now);
    void remove(block_map::iterator one);

    block_map blocks_{};
    std::size_t memory_ = 0;
};

}  // namespace tamrix::editing
