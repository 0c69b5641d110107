// The `tamrix-chips` command.
#include "chips/command.h"

#include <cstdio>

int main(int count, char** words)
{
    const auto result = tamrix::sim::run_chips_command({words + (count > 0 ? 1 : 0), words + count});
    std::fputs(result.out.c_str(), stdout);
    std::fputs(result.err.c_str(), stderr);
    return std::fflush(stdout) == 0 ? result.status : 1;
}
