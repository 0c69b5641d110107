// The second process of a test: see other_process.cpp for its orders.
#pragma once

#include <cstdio>
#include <string>

#include <sys/types.h>

namespace tamrix::tests {

class other_process {
public:
    other_process();
    ~other_process();
    other_process(const other_process&) = delete;
    other_process& operator=(const other_process&) = delete;

    /// Carries an order out and yields its answer.
    std::string order(const std::string& line);

private:
    pid_t pid_ = 0;
    std::FILE* orders_ = nullptr;
    std::FILE* answers_ = nullptr;
};

}  // namespace tamrix::tests
