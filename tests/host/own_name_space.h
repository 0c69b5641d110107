// A name space that no other test and no other process has.
#pragma once

#include <atomic>
#include <string>

#include <unistd.h>

namespace tamrix::tests {

inline std::string own_name_space()
{
    static std::atomic<int> count = 0;
    return "host-test-" + std::to_string(::getpid()) + "-" + std::to_string(++count) + "-";
}

}  // namespace tamrix::tests
