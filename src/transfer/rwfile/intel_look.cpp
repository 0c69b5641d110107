// What can be told of an Intel HEX file without loading it: whether it is one, and which addresses it fills.
#include "transfer/rwfile/intel.h"
#include "transfer/rwfile/intel_record.h"

#include <algorithm>
#include <cstring>

namespace tamrix {

namespace {

std::size_t next_colon(std::span<const std::uint8_t> file, std::size_t from)
{
    const void* found = from < file.size() ? std::memchr(&file[from], ':', file.size() - from) : nullptr;
    return found != nullptr ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - file.data())
                            : file.size();
}

/// The byte sum of a whole record, checksum included, is 0 when it is good; none where the record is cut or not
/// hexadecimal.
std::optional<unsigned> record_sum(std::span<const std::uint8_t> file, std::size_t colon, const intel_head& head)
{
    unsigned sum = head.sum();
    for (std::size_t i = 0; i <= head.length; ++i) {
        const std::size_t at = colon + 9 + 2 * i;
        if (at + 1 >= file.size()) return std::nullopt;
        const int value = hex_digits::byte(&file[at]);
        if (value < 0) return std::nullopt;
        sum += static_cast<unsigned>(value);
    }
    return sum & 0xFF;
}

}  // namespace

/// The first record decides, wherever text before it ends. A ":" in a binary file is followed by eight digits and a
/// right checksum only by an accident that does not happen.
detection detect_intel(std::span<const std::uint8_t> head)
{
    for (std::size_t p = next_colon(head, 0); p < head.size(); p = next_colon(head, p + 1)) {
        const auto record = intel_head_at(head, p);
        if (!record || record->type > 5) continue;
        const auto sum = record_sum(head, p, *record);
        if (sum == 0u) return detection::mine;
        const bool starts_line = p == 0 || head[p - 1] == '\n' || head[p - 1] == '\r';
        if (starts_line) return detection::damaged;
    }
    return detection::no;
}

std::optional<address_range> measure_intel(std::span<const std::uint8_t> file)
{
    std::optional<address_range> range;
    std::int64_t extension = 0;
    for (std::size_t p = next_colon(file, 0); p < file.size(); p = next_colon(file, p)) {
        const auto head = intel_head_at(file, p);
        if (!head || head->type == 3 || head->type == 5) {
            ++p;
            continue;
        }
        if (head->type == 1 || head->type > 5) break;
        if (head->type == 0) {
            const std::int64_t begin = extension + head->address;
            const std::int64_t end = begin + head->length;
            if (!range) range = {begin, end};
            range = {std::min(range->begin, begin), std::max(range->end, end)};
            p += 11 + 2 * std::size_t{head->length};
            continue;
        }
        std::uint8_t value[2]{};
        unsigned sum = 0;
        if (p + 13 > file.size() || !hex_digits::decode(&file[p + 9], 2, value, sum)) break;
        extension = (value[0] * 256 + value[1]) * (head->type == 2 ? 16LL : 65536LL);
        p += 15;
    }
    return range;
}

}  // namespace tamrix
