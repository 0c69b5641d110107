// The bytes of a memory with gaps, at any address.
#pragma once

#include "files/memory_block.h"
#include "image/segments.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace tamrix {

/// Addresses are below this, 2^48, which no file reaches.
inline constexpr std::uint64_t image_address_limit = std::uint64_t{1} << 48;

class memory_image final : public data_taker {
public:
    /// Later bytes of an address replace earlier ones. Throws std::bad_alloc, and std::out_of_range above the limit.
    void take(std::uint64_t address, std::span<const std::uint8_t> bytes) override;

    /// Found anew after each change, in a walk over all bytes.
    const segment_list& filled() const;
    bool empty() const { return pages_.empty(); }
    /// From the first byte to the last one, gaps included; empty if there is none.
    memory_segment extent() const;

    using visitor = std::function<void(std::uint64_t address, std::span<const std::uint8_t> bytes)>;
    /// The filled bytes inside `range`, in pieces of any length, in the order of their addresses.
    void visit(memory_segment range, const visitor& see) const;
    void visit(const visitor& see) const { visit(extent(), see); }
    /// Byte for byte, none where nothing is.
    std::optional<std::uint8_t> at(std::uint64_t address) const;

private:
    static constexpr std::uint64_t page_bytes = 0x10000;
    /// Which bytes are filled is one bit each: halves of a memory that two files bring fill every other byte.
    struct page {
        std::array<std::uint8_t, page_bytes> bytes;
        std::array<std::uint64_t, page_bytes / 64> filled;
        void fill(std::uint64_t first, std::uint64_t count);
    };

    /// Room for pages, and how many of them are in use.
    struct page_store {
        memory_block memory;
        std::size_t room = 0, used = 0;
    };

    page& page_of(std::uint64_t address);
    page* fresh_page();

    std::vector<page_store> stores_;
    std::map<std::uint64_t, page*> pages_;  // by the address of the first byte
    std::uint64_t last_address_ = 1;        // of the page that was wanted last; no page's at the start
    page* last_page_ = nullptr;
    mutable std::optional<segment_list> filled_;
};

/// The sum of all bytes, as programmers show it, and the CRC-32 (polynomial EDB88320) of the bytes in the order of
/// their addresses; gaps do not count.
struct image_sums {
    std::uint64_t sum = 0;
    std::uint32_t crc32 = 0;
};
image_sums sums_of(const memory_image& image);

// Each makes another image of one.

/// What lies in `range`.
memory_image cropped(const memory_image& image, memory_segment range);
/// Each address moved by `offset`. Throws std::out_of_range if one would be below 0 or above the limit.
memory_image moved(const memory_image& image, std::int64_t offset);
/// The bytes of each group of `group` (2 or 4) addresses in the reverse order. An image whose groups are not whole has
/// its gaps at other places then.
memory_image swapped(const memory_image& image, int group);
/// What `range` has no byte for, at its ends too, in stretches of at least `least` bytes.
std::vector<memory_segment> gaps_in(const memory_image& image, memory_segment range, std::uint64_t least = 1);
/// With `value` in all gaps of `range`.
void fill_gaps(memory_image& image, memory_segment range, std::uint8_t value);

}  // namespace tamrix
