#include "cli/reviewed_run.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

namespace tamrix::tests {

namespace {

constexpr std::string_view after_time = " ms  ";

/// A line without its time as the reviewed runs write it; empty where they do not.
std::string in_reviewed_form(std::string_view line)
{
    if (line.starts_with("->") || line.starts_with("note: ")) return {};
    if (line.starts_with("dialog ")) return std::string{line.substr(7)};
    if (line.starts_with("regin") || line.starts_with("ctlin")) return std::string{line.substr(0, line.find(": "))};
    const auto arrow = line.find(" -> ");
    if (arrow == std::string_view::npos) return std::string{line};
    const std::string start{line.substr(0, arrow)};
    if (line.starts_with("usbbulkread") || line.starts_with("hwreset")) return start;
    return start + " " + std::string{line.substr(arrow + 4)};
}

void add(run_lines& lines, const std::string& line, int times)
{
    constexpr int most_in_full = 3;
    if (times > most_in_full) return lines.push_back(line + " (" + std::to_string(times) + " times)");
    lines.insert(lines.end(), static_cast<std::size_t>(times), line);
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

run_lines calls_in(const std::string& transcript)
{
    run_lines lines;
    std::string last;
    int times = 0;
    const auto end = [&] { add(lines, last, std::exchange(times, 0)); };
    for (std::string_view left = transcript; !left.empty();) {
        std::string_view line = left.substr(0, left.find('\n'));
        left.remove_prefix(line.size() + 1);
        line.remove_prefix(line.find(after_time) + after_time.size());
        std::string call = in_reviewed_form(line);
        if (call.empty()) continue;
        if (call != last) end();
        last = std::move(call);
        ++times;
    }
    end();
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
