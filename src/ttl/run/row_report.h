// Reports a failed row, in the host's log or in a box that asks how to go on, and a run that broke off.
#pragma once

#include "ttl/run_outcome.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

class session;

enum class after_report : std::uint8_t {
    go_on,         // the run stays failed
    forgive,       // Ignore: as if the row had passed
    start_again,   // Retry
    end_as_failed  // Abort
};

/// The two lines of the report, without line feeds.
struct row_lines {
    std::string expected, result;
};
row_lines lines_of(const session& plug_in, const failed_row& failed);

/// `indent` goes before the box's second line.
after_report report_failed_row(session& plug_in, std::uint8_t logmode, const failed_row& failed,
                               std::string_view indent = {});

/// A box that says that the programmer could not be reached; the message `title` is its title.
void tell_communication_error(session& plug_in, int title);

}  // namespace tamrix
