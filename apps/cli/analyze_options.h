// The options of tamrix analyze.
#pragma once

#include "cli/simulated_socket.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tamrix::cli {

/// The words of the command line as typed; none for an option that was not given.
struct analyze_words {
    std::string command;  // "record", "draw" or "info"
    std::string file;
    std::optional<std::string> out, banks, trigger, level, pin, wait, transcript;
    socket_words socket{};
    std::optional<std::string> from, samples, period;
    bool json = false;
};

struct record_options {
    std::string out{};
    int banks = 4;             // of the programmer's memory that are read
    bool waits = false;        // for the trigger
    bool high = false;         // the trigger's level
    std::uint8_t pin = 0;      // of the trigger: 0 is P21
    int wait_seconds = 10;     // how long the trigger may take
    std::string transcript{};  // a file; empty: none
    socket_options socket{};
};

/// For a file of raw samples.
struct capture_options {
    std::string file{};
    std::string out{};                    // a picture; empty: the terminal
    std::int32_t from = 0;                // the first sample that is drawn
    std::optional<std::int32_t> count{};  // how many; none: what fits
    double period_us = 3.4;               // from one sample to the next
    bool json = false;
};

void add_record_options(CLI::App& command, analyze_words& words);
void add_draw_options(CLI::App& command, analyze_words& words);
void add_info_options(CLI::App& command, analyze_words& words);
/// Throw command_error.
record_options checked_record(const analyze_words& words);
capture_options checked_capture(const analyze_words& words);

}  // namespace tamrix::cli
