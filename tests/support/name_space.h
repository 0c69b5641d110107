// Names that no other test and no other process has. A killed test leaves shared objects, and its process number comes
// again: so each run has a random number too.
#pragma once

#include <atomic>
#include <random>
#include <string>

#include <unistd.h>

namespace tamrix::tests {

/// For the names of what this process makes.
inline std::string mark_of_process()
{
    static const unsigned run = std::random_device{}();
    return std::to_string(::getpid()) + "-" + std::to_string(run);
}

/// A name space of its own for each call.
inline std::string fresh_name_space()
{
    static std::atomic<int> count = 0;
    return "tamrix-test-" + mark_of_process() + "-" + std::to_string(++count) + "-";
}

}  // namespace tamrix::tests
