// The options that describe the simulated programmer to a command that uses it as a whole.
#pragma once

#include "cli/simulated_socket.h"

#include <string>

namespace CLI {
class App;
}

namespace tamrix::cli {

inline constexpr const char* programmer_group = "Simulated programmer";

/// --model, --route, --wfig, and --fault with some examples in its help.
void add_programmer_options(CLI::App& command, socket_words& words, const std::string& examples_of_faults);
/// --signal.
void add_signal_option(CLI::App& command, socket_words& words);

}  // namespace tamrix::cli
