// The options of tamrix wave.
#pragma once

#include "cli/simulated_socket.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tamrix::cli {

/// The words of the command line as typed; none for an option that was not given.
struct wave_words {
    std::string command;  // "meter" or "generate"
    std::string hertz;
    std::optional<std::string> count, from_generator, transcript;
    socket_words socket{};
};

struct wave_options {
    socket_options socket{};
    std::string hertz{};       // as typed into the generator, digits alone
    std::string hertz_word{};  // its name on the command line; empty: no generator is wanted
    int count = 5;             // of readings
    std::string transcript{};  // a file; empty: none
};

void add_meter_options(CLI::App& command, wave_words& words);
void add_generate_options(CLI::App& command, wave_words& words);
/// Throws command_error.
wave_options check(const wave_words& words);

}  // namespace tamrix::cli
