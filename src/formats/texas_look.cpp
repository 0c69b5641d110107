// What can be known about a Texas Instrument text without loading it.
#include "files/text_lines.h"
#include "formats/texas.h"
#include "formats/text_digits.h"

#include <algorithm>

namespace tamrix {

/// An address line first, then a line of byte pairs.
detection detect_texas(const file_start& file)
{
    const std::string_view text{reinterpret_cast<const char*>(file.bytes.data()), file.bytes.size()};
    if (!text.starts_with('@') || !number_in(text, 1, 4)) return detection::no;
    const std::size_t next = text.find_first_not_of("\r\n", text.find_first_of("\r\n"));
    if (next == std::string_view::npos) return detection::damaged;
    const std::string_view line = text.substr(next);
    if (line.starts_with('q')) return detection::mine;
    const bool separated = line.size() < 3 || line[2] == ' ' || line[2] == '\r' || line[2] == '\n';
    return number_in(line, 0, 2) && separated ? detection::mine : detection::damaged;
}

std::optional<address_range> measure_texas(const std::string& path)
{
    std::optional<address_range> range;
    std::int64_t address = 0;
    text_lines lines{path};
    while (const auto line = lines.next()) {
        if (line->starts_with('q')) break;
        if (line->starts_with('@')) {
            const auto start = number_in(*line, 1, 4);
            if (!start) break;
            address = *start;
            if (!range) range = {address, address};
            range->begin = std::min(range->begin, address);
            continue;
        }
        if (!range) continue;
        address += static_cast<std::int64_t>(line->size() + 1) / 3;
        range->end = std::max(range->end, address);
    }
    return range;
}

}  // namespace tamrix
