// A programmer one of whose calls goes wrong.
#pragma once

#include "programmer/programmer.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tamrix::tests {

/// What goes wrong.
enum class failing : std::uint8_t {
    reply,            // replywait says that none came
    switch_reply,     // ctlout says so, after the driver has switched
    acknowledgement,  // replycheck ends without one
    write,            // a frame or a block of data is refused
    read,             // a bulk read never ends
    reset,            // hwreset says that nobody answers
    port_read,        // regin says that it could not read
    board,            // boardsel says that there is none
};

/// One call that can go wrong: the stage of the run, and the command. That of a reply is the command that it answers.
struct step {
    std::string stage;
    std::string command;  // "9", "10 to 1 0", "data" and so on

    auto operator<=>(const step&) const = default;
};

struct failure {
    failing what = failing::reply;
    int at = 0;                                    // the call that goes wrong, from 1; 0: none does
    std::function<std::string()> stage{};          // of now
    std::map<failing, std::vector<step>> steps{};  // the calls of each kind so far, with the one that went wrong
};

/// Programmers of `source` with that failure, which has to outlive them.
hw::programmer_source with_failure(hw::programmer_source source, failure& one);

}  // namespace tamrix::tests
