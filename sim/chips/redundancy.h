// Says whether any row could show a fault that no row shows.
#pragma once

#include "chips/vector_run.h"

namespace tamrix::sim {

/// Tries every input of a chip without memory; one with memory is not proved.
std::string why_missed(const circuit& plan, const stuck_fault& fault, std::size_t most_rows);

}  // namespace tamrix::sim
