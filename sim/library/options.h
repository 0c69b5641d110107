// What the text says that a host hands to the simulated programmer when it is loaded as a library, or later on.
#pragma once

#include "sim/programmer.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::sim {

/// Entries, each on a line of its own or behind a ";":
///     model 40            the programmer's model
///     ram banks 4         banks of memory, 1 to 16
///     fault TEXT          as add_fault() in faults.h tells
///     no faults           all is sound, but for what stands behind it
///     socket NAME         "empty", "test board" or a chip of the folder that "chips" names
///     chips FOLDER        where the *.chip files are
///     speed 10            times as fast as the clock on the wall
///     transcript FILE     the calls with their times, hazards and notes among them
///     instance 0          number of the host whose blocks replies go to, for a programmer that finds them itself
struct library_options {
    int model = 40;
    int memory_banks = 0;
    double speed = 1;
    std::vector<std::string> faults{};
    bool no_faults = false;
    std::optional<std::string> socket{};  // none: not told
    std::string chips_folder{};           // empty: not told
    std::string transcript_file{};        // empty: none
    std::optional<int> host_instance{};   // none: not told
};

/// Throws std::invalid_argument that says what was found and what can stand there.
library_options read_options(std::string_view text);

/// The same for a programmer that has been made: its model, memory, speed and transcript are as they are.
library_options read_changes(std::string_view text);

/// What goes into the socket of a model; null for "empty". Throws std::invalid_argument for a name that is not known,
/// or where a file of the chips is wrong.
std::unique_ptr<part> part_named(std::string_view name, int model, const std::string& chips_folder);

}  // namespace tamrix::sim
