// What can be told of an Intel HEX file without loading it: whether it is one, and which addresses it fills.
#include "transfer/file_window.h"
#include "transfer/rwfile/intel.h"
#include "transfer/rwfile/intel_record.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tamrix {

namespace {

/// The byte sum of a whole record, checksum included, is 0 when it is good; none where the record is cut or not
/// hexadecimal.
std::optional<unsigned> record_sum(std::span<const std::uint8_t> record, const intel_head& head)
{
    constexpr std::size_t digits = 9;
    std::array<std::uint8_t, 256> bytes{};
    const std::size_t count = head.length + std::size_t{1};
    unsigned sum = head.sum();
    if (digits + 2 * count > record.size()) return std::nullopt;
    if (!hex_digits::decode(&record[digits], count, bytes.data(), sum)) return std::nullopt;
    return sum & 0xFF;
}

}  // namespace

/// The first record decides, wherever text before it ends. A ":" in a binary file is followed by eight digits and a
/// right checksum only by an accident that does not happen.
detection detect_intel(std::span<const std::uint8_t> head)
{
    for (std::size_t p = 0; p < head.size(); ++p) {
        const auto* colon = static_cast<const std::uint8_t*>(std::memchr(&head[p], ':', head.size() - p));
        if (colon == nullptr) break;
        p = static_cast<std::size_t>(colon - head.data());
        const auto record = intel_head_of(head.subspan(p));
        if (!record || record->type > 5) continue;
        if (record_sum(head.subspan(p), *record) == 0u) return detection::mine;
        const bool starts_line = p == 0 || head[p - 1] == '\n' || head[p - 1] == '\r';
        if (starts_line) return detection::damaged;
    }
    return detection::no;
}

std::optional<address_range> measure_intel(const std::string& path)
{
    std::optional<address_range> range;
    std::int64_t extension = 0;
    file_window file{path};
    for (std::int64_t p = file.find(':', 0); p < file.length(); p = file.find(':', p)) {
        const auto record = file.from(p, longest_intel_record);
        const auto head = intel_head_of(record);
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
            p += 11 + 2 * std::int64_t{head->length};
            continue;
        }
        std::uint8_t value[2]{};
        unsigned sum = 0;
        if (record.size() < 13 || !hex_digits::decode(&record[9], 2, value, sum)) break;
        extension = (value[0] * 256 + value[1]) * (head->type == 2 ? 16LL : 65536LL);
        p += 15;
    }
    return range;
}

}  // namespace tamrix
