#include "pld/detect.h"

#include "files/file_io.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace tamrix {

namespace {

constexpr std::size_t head_bytes = 65536;

bool is_digit(char character) { return character >= '0' && character <= '9'; }

/// A field of a fuse file: `name` and a digit, at the start of a line or after "*".
bool has_field(std::string_view text, std::string_view name)
{
    for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
        const bool starts = at == 0 || text[at - 1] == '\n' || text[at - 1] == '\r' || text[at - 1] == '*';
        const std::size_t next = at + name.size();
        if (starts && next < text.size() && is_digit(text[next])) return true;
    }
    return false;
}

bool is_jedec(std::string_view text)
{
    const bool fuses = has_field(text, "L");
    return fuses && text.find('*') != std::string_view::npos && (has_field(text, "QF") || text.starts_with('\x02'));
}

/// The first word that is no comment is an SVF command.
bool is_svf(std::string_view text)
{
    constexpr std::array<std::string_view, 14> commands{"ENDDR", "ENDIR",  "FREQUENCY", "HDR", "HIR",
                                                        "PIO",   "PIOMAP", "RUNTEST",   "SDR", "SIR",
                                                        "STATE", "TDR",    "TIR",       "TRST"};
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t begin = line.find_first_not_of(" \t");
        if (begin == std::string_view::npos || line.substr(begin).starts_with('!') ||
            line.substr(begin).starts_with("//")) {
            continue;
        }
        const std::string_view words = line.substr(begin);
        const std::string_view word = words.substr(0, words.find_first_of(" \t;("));
        return std::ranges::find(commands, word) != commands.end();
    }
    return false;
}

}  // namespace

pld_format detect_pld_format(const std::string& path)
{
    input_file file{path};
    std::vector<std::uint8_t> head(head_bytes);
    head.resize(file.read_at(0, head));
    const std::string_view text{reinterpret_cast<const char*>(head.data()), head.size()};
    if (text.find('\0') != std::string_view::npos) return pld_format::none;
    if (is_jedec(text)) return pld_format::jedec;
    return is_svf(text) ? pld_format::svf : pld_format::none;
}

}  // namespace tamrix
