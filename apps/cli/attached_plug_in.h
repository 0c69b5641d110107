// The plug-in and its host in one process, on shared blocks that no other program uses.
#pragma once

#include "cli/shell.h"
#include "entry/all_dialogs.h"
#include "entry/entry_methods.h"
#include "files/unfinished.h"
#include "host/host_blocks.h"
#include "session/session.h"

#include <optional>
#include <string>

namespace tamrix::cli {

class attached_plug_in {
public:
    /// Creates the small blocks and attaches the plug-in to them. From then on nothing is left over, even if this
    /// process is killed. Throws std::runtime_error.
    explicit attached_plug_in(std::int32_t language);

    /// Creates the data buffer and attaches it. The same goes for it.
    void attach_buffer(std::int32_t buflength);

    /// Returns the status text and clears it.
    std::string take_status_text();

private:
    std::optional<ending_held> names_are_held_{std::in_place};  // until the names of the blocks are withdrawn

public:
    shell screen;
    host::host_blocks blocks;
    session state;
    module_variables variables;
    entry_methods methods{state, variables, all_dialogs()};
};

}  // namespace tamrix::cli
