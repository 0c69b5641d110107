// The vector library of the logic IC test: generated from chips, in the file format that the test reads.
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

/// A record for every name and alias, in ascending order, ignoring case. Throws chip_error if a name is part of a name
/// before it (deleting it from the library would damage the other), or if a line would be too long.
std::string library_text(const std::vector<chip>& chips, const std::vector<vector_set>& sets);

/// The missed faults and why, one line a chip, and the total.
std::string coverage_text(const std::vector<chip>& chips, const std::vector<vector_set>& sets);

}  // namespace tamrix::sim
