// What can be known about the two vendors' binary images without loading them.
#include "files/file_io.h"
#include "formats/emc.h"
#include "formats/holtek.h"
#include "formats/holtek_segment.h"

namespace tamrix {

detection detect_holtek(const file_start& file)
{
    const auto head = file.bytes;
    const auto begin = first_holtek_segment(head);
    if (!begin) return detection::no;
    const auto segment = holtek_segment_at(head, *begin);
    if (!segment) return detection::no;
    if (segment->end() > head.size()) return detection::maybe;
    unsigned sum = 0;
    for (std::size_t at = segment->begin + 1; at < segment->end(); ++at) sum += head[at];
    return (sum & 0xFF) == 0 ? detection::mine : detection::damaged;
}

/// None: where the second segment goes follows from the device, not from the file.
std::optional<address_range> measure_holtek(const std::string&) { return std::nullopt; }

/// A word count that fits the length is a weak sign: an erased image of 128 KiB has it too. The file's name must say
/// the rest.
detection detect_emc(const file_start& file)
{
    const auto head = file.bytes;
    const bool fits = head.size() > 2 && 2 + 2 * (head[0] + 256 * head[1]) == file.file_length;
    return fits ? detection::maybe : detection::no;
}

std::optional<address_range> measure_emc(const std::string& path)
{
    const file_image file{path};
    if (file.bytes().size() < 2) return std::nullopt;
    return address_range{0, 2 * (file.bytes()[0] + 256 * file.bytes()[1])};
}

}  // namespace tamrix
