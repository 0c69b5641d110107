// What can be known about a Tektronix file without loading it.
#include "files/text_lines.h"
#include "formats/tektronix.h"
#include "formats/text_digits.h"

#include <algorithm>

namespace tamrix {

/// Decided by the first character and the first header.
detection detect_tektronix(const file_start& file)
{
    const std::string_view text{reinterpret_cast<const char*>(file.bytes.data()),
                                std::min<std::size_t>(file.bytes.size(), 16)};
    if (!text.starts_with('/')) return detection::no;
    const auto address = number_in(text, 1, 4), count = number_in(text, 5, 2), check = number_in(text, 7, 2);
    if (!address || !count || !check) return detection::no;
    return *check == digit_sum(*address) + digit_sum(*count) ? detection::mine : detection::damaged;
}

std::optional<address_range> measure_tektronix(const std::string& path)
{
    std::optional<address_range> range;
    text_lines lines{path};
    while (const auto line = lines.next()) {
        const auto address = number_in(*line, 1, 4), count = number_in(*line, 5, 2);
        if (!address || !count || *count == 0) break;
        if (!range) range = {*address, *address};
        range = {std::min<std::int64_t>(range->begin, *address), std::max<std::int64_t>(range->end, *address + *count)};
    }
    return range;
}

}  // namespace tamrix
