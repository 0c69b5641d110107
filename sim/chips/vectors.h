// The generator of test vectors: rows that every engine can play, found by trial, and graded by the faults they show.
#pragma once

#include "chips/vector_run.h"

namespace tamrix::sim {

struct missed_fault {
    std::string pin;
    bool high = false;
    std::string reason;
};

struct vector_set {
    std::size_t pins = 0;
    std::vector<std::string> rows;  // one letter a pin: 1 0 H L C X Z V G
    std::size_t faults = 0;         // of all pins: low, high and open, supply included
    std::size_t found = 0;
    std::vector<missed_fault> missed;
    std::vector<std::string> twins;  // other chips of the package that pass these rows
};

struct rival {
    std::string name;
    std::shared_ptr<const circuit> plan;
};

/// The most rows that a record can have for a device with this number of pins.
std::size_t most_rows(std::size_t pins);

/// The same for the same arguments, on every machine. `rivals`: chips with the same pins and supply; the rows should
/// distinguish them from this one.
vector_set make_vectors(const std::string& name, const std::shared_ptr<const circuit>& plan,
                        const std::vector<rival>& rivals);

}  // namespace tamrix::sim
