// The library in data/lib as a reader sees it: lines, and records by their columns.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tamrix::tests {

inline std::string file_bytes(const std::filesystem::path& file)
{
    std::ifstream in{file, std::ios::binary};
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline const std::string& library()
{
    static const auto text = file_bytes(std::filesystem::path{TAMRIX_DATA_FOLDER} / "lib" / "test.lib");
    return text;
}

/// CR LF ends a line, a lone LF is data. What is after the last CR LF comes as a line of its own.
inline std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find("\r\n", at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

struct read_record {
    std::string name;
    std::size_t pins = 0;
    std::vector<std::string> rows;
};

inline read_record record_of(const std::string& line)
{
    read_record made;
    made.name = line.substr(1, line.substr(1, 12).find(' '));
    const auto count = std::stoul(line.substr(13, 2), nullptr, 16);
    made.pins = std::stoul(line.substr(16, 2));
    for (std::size_t row = 0; row + 1 < count; ++row)
        made.rows.push_back(line.substr(19 + row * (made.pins + 1), made.pins));
    return made;
}

inline std::vector<read_record> records()
{
    std::vector<read_record> made;
    for (const auto& line : lines_of(library()))
        if (line[0] == '$' && line.substr(0, 4) != "$KSM") made.push_back(record_of(line));
    return made;
}

}  // namespace tamrix::tests
