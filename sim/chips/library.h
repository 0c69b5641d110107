// The vector library of the logic IC test: made from chips, and written as the file that the test reads.
#pragma once

#include "chips/chip.h"
#include "chips/vectors.h"

namespace tamrix::sim {

struct library_entry {
    std::string name;
    const chip* from = nullptr;
    std::size_t set = 0;  // of the chip
};

/// The vectors of all chips, in the order of the chips.
std::vector<vector_set> make_all_vectors(const std::vector<chip>& chips);

/// A record for every name and alias, in ascending order without regard to case. Throws chip_error where a name stands
/// inside a name before it (taking it out of the library would damage the other), or a line would be too long.
std::string library_text(const std::vector<chip>& chips, const std::vector<vector_set>& sets);

/// What is missed and why, a line a chip, and the sum.
std::string coverage_text(const std::vector<chip>& chips, const std::vector<vector_set>& sets);

}  // namespace tamrix::sim
