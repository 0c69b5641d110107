#include "cli/reviewed_run.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace tamrix::tests {

namespace {

/// As the reviewed runs write it; empty where they do not.
std::string in_reviewed_form(std::string line)
{
    line.erase(0, line.find(" ms  ") + 5);
    if (line.starts_with("->")) return {};
    if (line.starts_with("dialog ")) return line.substr(7);
    if (const auto answer = line.find(": "); line.starts_with("regin") || line.starts_with("ctlin"))
        return line.substr(0, answer);
    const auto arrow = line.find(" -> ");
    if (arrow == std::string::npos) return line;
    if (line.starts_with("usbbulkread") || line.starts_with("hwreset")) return line.substr(0, arrow);
    return line.replace(arrow, 4, " ");
}

}  // namespace

std::vector<std::filesystem::path> reviewed_runs(const std::string& start)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator{TAMRIX_INSTRUMENT_TRANSCRIPTS})
        if (entry.path().filename().string().starts_with(start)) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

run_lines reviewed_run(const std::filesystem::path& file)
{
    run_lines all, group;
    int times = 0;
    const auto end_group = [&] {
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

run_lines calls_in(const std::string& transcript)
{
    run_lines lines;
    std::istringstream text{transcript};
    for (std::string line; std::getline(text, line);)
        if (std::string call = in_reviewed_form(std::move(line)); !call.empty()) lines.push_back(std::move(call));
    return lines;
}

std::vector<std::string> parts_of_name(const std::filesystem::path& file)
{
    std::vector<std::string> parts;
    std::istringstream name{file.stem().string()};
    for (std::string part; std::getline(name, part, '-');) parts.push_back(part);
    return parts;
}

}  // namespace tamrix::tests
