// The plug-in and its host in one process, on shared blocks that no other program uses.
#pragma once

#include "cli/shell.h"
#include "entry/all_dialogs.h"
#include "entry/entry_methods.h"
#include "host/host_blocks.h"
#include "session/session.h"

#include <string>

namespace tamrix::cli {

class attached_plug_in {
public:
    /// Creates the small blocks and attaches the plug-in to them. Throws std::runtime_error.
    explicit attached_plug_in(std::int32_t language);

    /// Creates the data buffer and attaches it. From then on nothing is left over, even if this process is killed.
    void attach_buffer(std::int32_t buflength);

    /// Returns the status text and clears it.
    std::string take_status_text();

    shell screen;
    host::host_blocks blocks;
    session state;
    module_variables variables;
    entry_methods methods{state, variables, all_dialogs()};
};

}  // namespace tamrix::cli
