// The options text of the simulated programmer, which a host passes when it is created as a library, or later.
#pragma once

#include "sim/programmer.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::sim {

/// Entries, one a line; ";" separates entries on one line:
///     model 40            the programmer's model
///     generation 17       of the hardware, 0 to 255
///     ram banks 4         banks of memory, 1 to 16
///     fault TEXT          see add_fault() in faults.h
///     no faults           removes all faults but those that follow
///     signal TEXT         at P21 to P28, see signal_set::add() in signals/signal_set.h
///     no signals          removes all signals but those that follow
///     socket NAME         "empty", "test board" or a chip of the folder that "chips" names; with modules
///                         the same in all sockets
///     chips FOLDER        where the *.chip files are
///     speed 10            how many times faster than real time
///     transcript FILE     the calls with their times, with hazards and notes
///     instance 0          number of the host whose blocks receive replies, for a programmer that finds them itself
struct library_options {
    int model = 40;
    int generation = 0;
    int memory_banks = 0;
    double speed = 1;
    std::vector<std::string> faults{};
    bool no_faults = false;
    std::vector<std::string> signals{};
    bool no_signals = false;
    std::optional<std::string> socket{};  // none: not given
    std::string chips_folder{};           // empty: not given
    std::string transcript_file{};        // empty: none
    std::optional<int> host_instance{};   // none: not given
};

/// Throws std::invalid_argument that says what was found and what is possible there.
library_options read_options(std::string_view text);

/// The same for an existing programmer, whose model, memory, speed and transcript cannot change.
library_options read_changes(std::string_view text);

/// The part for the socket of a model; null for "empty". Throws std::invalid_argument if the name is unknown or a file
/// of the chips is wrong.
std::unique_ptr<part> part_named(std::string_view name, int model, const std::string& chips_folder);

/// The chips of a folder, whose files are read at the first name; with "" there are none.
part_shelf shelf_of(const std::string& chips_folder);

}  // namespace tamrix::sim
