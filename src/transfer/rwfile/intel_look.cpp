// What can be told of Intel HEX and Intel Hex16 files without loading them: whether it is one, and which addresses it
// fills.
#include "transfer/file_window.h"
#include "transfer/rwfile/intel.h"
#include "transfer/rwfile/intel16.h"
#include "transfer/rwfile/intel_record.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tamrix {

namespace {

/// The byte sum of a whole record with `data_bytes`, checksum included, is 0 when it is good; none where the record is
/// cut or not hexadecimal.
std::optional<unsigned> record_sum(std::span<const std::uint8_t> record, const intel_head& head, std::size_t data_bytes)
{
    constexpr std::size_t digits = 9;
    std::array<std::uint8_t, 2 * 255 + 1> bytes{};
    const std::size_t count = data_bytes + 1;
    unsigned sum = head.sum();
    if (digits + 2 * count > record.size()) return std::nullopt;
    if (!hex_digits::decode(&record[digits], count, bytes.data(), sum)) return std::nullopt;
    return sum & 0xFF;
}

/// The first data record decides, wherever text before it ends; records of other types are the same in both formats. A
/// ":" in a binary file is followed by eight digits and a right checksum only by an accident that does not happen.
detection detect(std::span<const std::uint8_t> head, std::size_t item_bytes)
{
    detection result = detection::no;
    for (std::size_t p = 0; p < head.size(); ++p) {
        const auto* colon = static_cast<const std::uint8_t*>(std::memchr(&head[p], ':', head.size() - p));
        if (colon == nullptr) break;
        p = static_cast<std::size_t>(colon - head.data());
        const auto text = head.subspan(p);
        const auto record = intel_head_of(text);
        if (!record || record->type > 5) continue;
        const bool has_data = record->type == 0 && record->length != 0;
        const bool good = record_sum(text, *record, has_data ? item_bytes * record->length : record->length) == 0u;
        const bool starts_line = p == 0 || head[p - 1] == '\n' || head[p - 1] == '\r';
        if (has_data && good) return detection::mine;
        if (has_data && starts_line) return detection::damaged;
        if (good && item_bytes == 1) result = detection::mine;
    }
    return result;
}

std::optional<address_range> measure(const std::string& path, std::int64_t item_bytes)
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
            const std::int64_t begin = item_bytes * (extension + head->address);
            const std::int64_t end = begin + item_bytes * head->length;
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

}  // namespace

detection detect_intel(const file_start& file) { return detect(file.bytes, 1); }
detection detect_intel16(const file_start& file) { return detect(file.bytes, 2); }
std::optional<address_range> measure_intel(const std::string& path) { return measure(path, 1); }
std::optional<address_range> measure_intel16(const std::string& path) { return measure(path, 2); }

}  // namespace tamrix
