// What `tamrix-chips` does: checks chip files, writes the vector library, reports which faults its vectors find.
#pragma once

#include <string>
#include <vector>

namespace tamrix::sim {

struct command_result {
    int status = 0;  // 0 done, 1 failed, 2 wrong usage
    std::string out, err;
};

command_result run_chips_command(const std::vector<std::string>& words);

}  // namespace tamrix::sim
