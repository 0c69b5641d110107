#include "host/image_text.h"

#include "base/arith.h"

namespace tamrix::host {

std::string address_text(std::uint64_t address) { return "0x" + arith::hex(static_cast<std::int64_t>(address)); }

std::string range_text(const memory_segment& range)
{
    return address_text(range.first) + " to " + address_text(range.end() - 1);
}

std::string bytes_text(std::uint64_t count) { return std::to_string(count) + (count == 1 ? " byte" : " bytes"); }

std::string extent_text(const segment_list& filled)
{
    const auto all = filled.all();
    if (all.empty()) return "no bytes";
    return bytes_text(filled.bytes()) + (all.size() == 1 ? "" : " in " + std::to_string(all.size()) + " segments") +
           ", " + range_text({all.front().first, all.back().end() - all.front().first});
}

std::string places_text(std::uint64_t count) { return std::to_string(count) + (count == 1 ? " place" : " places"); }

}  // namespace tamrix::host
