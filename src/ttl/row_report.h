// Tells of a failed row: in the host's log, or in a box that asks how to go on.
#pragma once

#include "plugin/session.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

enum class after_report : std::uint8_t {
    go_on,         // the run stays failed
    forgive,       // Ignore: as if the row had passed
    start_again,   // Retry
    end_as_failed  // Abort
};

struct failed_row {
    int number;          // from 1
    std::string row;     // what was expected
    std::string result;  // the same with its fail marks
};

/// `indent` goes before the box's second line.
after_report report_failed_row(session& plug_in, std::uint8_t logmode, const failed_row& failed,
                               std::string_view indent = {});

}  // namespace tamrix
