// The options of tamrix selftest.
#pragma once

#include "cli/simulated_socket.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tamrix::cli {

/// The words of the command line as typed; none for an option that was not given.
struct selftest_words {
    std::optional<std::string> item, on_fault, transcript;
    socket_words socket{};
    bool list = false, json = false, brief = false;
};

struct selftest_options {
    int item = 0;  // the index of the dialog's option, from 0; it may not exist
    socket_options socket{};
    std::optional<bool> test_board{};  // none: for an Output Test only
    bool stop_at_fault = false;
    std::string transcript{};  // a file; empty: none
    bool list = false, json = false;
    bool brief = false;  // only the faults and the verdict
};

void add_selftest_options(CLI::App& command, selftest_words& words);
/// Throws command_error.
selftest_options check(const selftest_words& words);

}  // namespace tamrix::cli
