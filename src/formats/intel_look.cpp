// What can be known about Intel HEX and Intel Hex16 files without loading them: whether it is one, and which addresses
// it fills.
#include "files/file_window.h"
#include "formats/intel.h"
#include "formats/intel16.h"
#include "formats/intel_record.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

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

/// The addresses that the data records of a part of a file fill.
class intel_measure {
public:
    intel_measure(file_window& file, std::int64_t item_bytes) : file_{file}, item_bytes_{item_bytes} {}

    /// Takes the records that start from `p` on and before `end`, as far as a reader would read.
    void walk(std::int64_t p, std::int64_t end);
    std::optional<address_range> range() const { return filled_.range(); }

private:
    void take(const intel_head& record)
    {
        filled_.add(item_bytes_ * (extension_ + record.address), item_bytes_ * record.length);
    }
    std::size_t take_run(std::span<const std::uint8_t> text);
    bool take_extension(const intel_head& head, std::span<const std::uint8_t> record);

    file_window& file_;
    const std::int64_t item_bytes_;
    std::int64_t extension_ = 0;
    address_extent filled_;
};

/// Takes the data records that follow each other at the start of `text` with only line ends between them, and returns
/// their length; nearly all of a file is such runs.
std::size_t intel_measure::take_run(std::span<const std::uint8_t> text)
{
    std::size_t at = 0, stride = 0;
    unsigned length = 256;
    while (at + longest_intel_record < text.size()) {
        const auto head = intel_head_of(text.subspan(at));
        if (!head || head->type != 0) break;
        take(*head);
        // Records are mostly of one length, so the processor need not wait for this one's to look at the next.
        if (head->length != length || text[at + stride] != ':') {
            length = head->length;
            stride = 11 + 2 * std::size_t{length};
            stride += text[at + stride] == '\r';
            stride += text[at + stride] == '\n';
        }
        at += stride;
    }
    return at;
}

bool intel_measure::take_extension(const intel_head& head, std::span<const std::uint8_t> record)
{
    std::uint8_t value[2]{};
    unsigned sum = 0;
    if (record.size() < 13 || !hex_digits::decode(&record[9], 2, value, sum)) return false;
    extension_ = (value[0] * 256 + value[1]) * (head.type == 2 ? 16LL : 65536LL);
    return true;
}

void intel_measure::walk(std::int64_t p, std::int64_t end)
{
    for (p = file_.find(':', p); p < end; p = file_.find(':', p)) {
        const auto record = file_.from(p, longest_intel_record);
        if (const std::size_t run = take_run(record); run != 0) {
            p += static_cast<std::int64_t>(run);
            continue;
        }
        const auto head = intel_head_of(record);
        if (!head || head->type == 3 || head->type == 5) {
            ++p;
            continue;
        }
        if (head->type == 1 || head->type > 5) return;
        if (head->type == 0) {
            take(*head);
            p += 11 + 2 * std::int64_t{head->length};
        } else {
            if (!take_extension(*head, record)) return;
            p += 15;
        }
    }
}

std::optional<address_range> measure(const std::string& path, std::int64_t item_bytes)
{
    file_window file{path};
    intel_measure part{file, item_bytes};
    part.walk(0, file.length());
    return part.range();
}

/// The first address record in the last part of a long file; after it all addresses are known.
std::optional<std::int64_t> known_part(file_window& file)
{
    constexpr std::string_view address_record = ":02000004";
    if (file.length() < shortest_estimated_bytes) return std::nullopt;
    const std::int64_t begin = file.length() - estimate_part_bytes;
    const auto text = file.from(begin, estimate_part_bytes);
    const auto found = std::search(text.begin(), text.end(), address_record.begin(), address_record.end());
    if (found == text.end()) return std::nullopt;
    return begin + (found - text.begin());
}

}  // namespace

detection detect_intel(const file_start& file) { return detect(file.bytes, 1); }
detection detect_intel16(const file_start& file) { return detect(file.bytes, 2); }
std::optional<address_range> measure_intel(const std::string& path) { return measure(path, 1); }
std::optional<address_range> measure_intel16(const std::string& path) { return measure(path, 2); }

std::optional<address_range> estimate_intel(const std::string& path)
{
    file_window file{path};
    const auto tail = known_part(file);
    if (!tail) return std::nullopt;
    intel_measure part{file, 1};
    part.walk(0, estimate_part_bytes);
    part.walk(*tail, file.length());
    return part.range();
}

}  // namespace tamrix
