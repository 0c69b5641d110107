// Drives the lines of one column of the socket one by one, through a test board that links each to the pin opposite.
#pragma once

#include "selftest/pin_access.h"

#include <span>

namespace tamrix {

/// Line `k` is lamp k of the left column, with lamp 47 - k as its partner.
struct sweep_plan {
    int first, limit;  // the lines from first to limit - 1
    int level;         // of all lines but the driven one
    int side;          // 0 drives the left column, 1 the right one
};

/// Drives and reads all its lines, paints and counts what differs, and asks about each faulty pin afterwards. A count
/// of differences that is one of `no_board_counts` means that no board is in the socket: nothing is asked then.
stage_end sweep_outputs(socket_frame& form, const pin_access& access, std::span<const int> no_board_counts,
                        const sweep_plan& plan);

}  // namespace tamrix
