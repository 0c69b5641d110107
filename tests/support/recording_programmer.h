// A programmer for tests: writes every call down as one line of text and answers as the test says.
#pragma once

#include "programmer/programmer.h"

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tamrix::tests {

/// What a socket reads at its six ports.
using six_bytes = std::array<std::uint8_t, 6>;

/// How a started bulk read ends.
enum class bulk_end : std::uint8_t { arrives, fails, never };

/// The lines, and the answers to come. It has to outlive the programmer. Where a list of answers is used up, all is
/// well: the hardware is there, frames are taken, replies come.
struct recording {
    std::vector<std::string> lines;
    std::deque<std::int32_t> usbcomwrite_results;
    std::deque<std::int32_t> hwreset_results;
    std::deque<bool> replywait_results;
    std::deque<bulk_end> bulk_ends;
    /// What the socket reads row by row, over whichever route; after it an empty socket, whose pins are all pulled up.
    std::deque<six_bytes> socket;
    /// Instead of `socket`: called for each row that is read.
    std::function<six_bytes()> read_socket;

    void add(std::string line) { lines.push_back(std::move(line)); }
    six_bytes next_row();
    /// Lines that begin with `start`, each counted.
    int count(std::string_view start) const;
    /// All lines, each with its line feed.
    std::string text() const;
};

/// A programmer that writes to `log`.
std::unique_ptr<hw::programmer> make_recorder(recording& log, const hw::reply_memory& replies);

/// Makes such programmers for a session's door.
hw::programmer_source recording_programmer(recording& log);

}  // namespace tamrix::tests
