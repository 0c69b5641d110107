// The reviewed run of an instrument, as the separate model writes it.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace tamrix::tests {

/// The lines of a file. One that repeats has its count, "regin 0 (131072 times)"; of a group of two, each is there as
/// often as it came.
inline std::vector<std::string> reviewed_lines(const std::filesystem::path& file)
{
    std::vector<std::string> all, group;
    int times = 0;
    const auto end_group = [&] {
        if (group.size() == 1)
            all.push_back(group.front() + " (" + std::to_string(std::exchange(times, 0)) + " times)");
        for (; times > 0; --times) all.insert(all.end(), group.begin(), group.end());
        group.clear();
    };
    std::ifstream text{file, std::ios::binary};
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("  ")) {
            group.push_back(line.substr(2));
            continue;
        }
        end_group();
        if (line.ends_with(" times")) {
            times = std::stoi(line);
        } else {
            all.push_back(line);
        }
    }
    end_group();
    return all;
}

}  // namespace tamrix::tests
