// Faults of the simulated programmer to choose from.
#pragma once

#include <span>

namespace tamrix::host {

/// One of each kind, with a pin that a person then changes; simulator::add_faults takes them.
std::span<const char* const> fault_examples();

}  // namespace tamrix::host
