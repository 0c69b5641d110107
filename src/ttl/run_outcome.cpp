#include "ttl/run_outcome.h"

#include <algorithm>

namespace tamrix {

/// A result has another letter than its row, or has one at all, only where the row failed.
std::uint64_t run_outcome::failed_pins() const
{
    std::uint64_t pins = 0;
    for (const failed_row& one : rows) {
        const std::size_t letters = std::min({one.row.size(), one.result.size(), std::size_t{64}});
        for (std::size_t i = 0; i < letters; ++i)
            if (one.result[i] != ' ' && one.result[i] != one.row[i]) pins |= std::uint64_t{1} << i;
    }
    return pins;
}

}  // namespace tamrix
