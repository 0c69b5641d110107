// What one load or save needs in addition to the session: its status and where its progress goes.
#pragma once

#include "files/file_window.h"
#include "formats/address_range.h"
#include "formats/transfer_variables.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tamrix {

class session;

enum class status : std::int16_t {
    done = 0,
    failed = 1,    // a bad file, a bad record, a file error
    rejected = 2,  // the entered values do not fit; the user has seen a message and may correct them
};

/// What a load does with the buffer first; the index of the dialog's option.
enum class clear_option : std::uint8_t { fill_ff = 0, fill_00 = 1, disabled = 2 };

/// What a load found in the file, whether it went to the buffer or not.
struct load_extent {
    std::optional<address_range> addresses{};
    bool whole = false;  // the reader went through the whole file, so `addresses` is complete
};

struct transfer_job {
    session& plug_in;
    transfer_variables& transfer;
    clear_option clear = clear_option::disabled;
    std::function<void(double percent)> progress;  // 0 to 100
    load_extent met{};                             // set by the readers that know it
};

using transfer_routine = status (*)(transfer_job&);

/// Runs a reader or writer and turns every fault into status 1 with its diagnostic.
status run_guarded(transfer_job& job, transfer_routine routine);

/// Leaves the diagnostic of a failed load of a text file: the line that holds the byte at `offset`.
status fail_in_text(transfer_job& job, file_window& file, std::int64_t offset, std::string found,
                    std::string expected = {});

/// The same for a reader that goes line by line; `line` counts from 1.
status fail_in_line(transfer_job& job, std::uint64_t line, std::string found, std::string expected);

/// Leaves the diagnostic of a failed load of a binary image.
status fail_at_offset(transfer_job& job, std::size_t offset, std::string found, std::string expected);

}  // namespace tamrix
