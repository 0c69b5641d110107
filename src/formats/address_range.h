// Ranges of addresses, in bytes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

namespace tamrix {

/// `end` is one past the last.
struct address_range {
    std::int64_t begin = 0;
    std::int64_t end = 0;

    bool operator==(const address_range&) const = default;
};

/// The lowest and the highest address of all ranges that were added.
class address_extent {
public:
    void add(std::int64_t begin, std::int64_t length)
    {
        begin_ = std::min(begin_, begin);
        end_ = std::max(end_, begin + length);
    }
    /// None if nothing was added.
    std::optional<address_range> range() const
    {
        if (begin_ > end_) return std::nullopt;
        return address_range{begin_, end_};
    }

private:
    std::int64_t begin_ = std::numeric_limits<std::int64_t>::max();
    std::int64_t end_ = std::numeric_limits<std::int64_t>::min();
};

}  // namespace tamrix
