// What can be told of Intel HEX and Intel Hex16 files without loading them: whether it is one, and which addresses it
// fills.
#include "transfer/file_window.h"
#include "transfer/rwfile/intel.h"
#include "transfer/rwfile/intel16.h"
#include "transfer/rwfile/intel_record.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

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

/// The lowest and the highest address that data records fill.
class measured_range {
public:
    explicit measured_range(std::int64_t item_bytes) : item_bytes_{item_bytes} {}

    void extension(std::int64_t address) { extension_ = address; }
    void take(const intel_head& record)
    {
        const std::int64_t begin = item_bytes_ * (extension_ + record.address);
        begin_ = std::min(begin_, begin);
        end_ = std::max(end_, begin + item_bytes_ * record.length);
    }
    /// Takes the data records that follow each other at the front of `text` with nothing but line ends between them,
    /// and yields their length; nearly all of a file is such runs.
    std::size_t take_run(std::span<const std::uint8_t> text)
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
    std::optional<address_range> result() const
    {
        if (begin_ > end_) return std::nullopt;
        return address_range{begin_, end_};
    }

private:
    std::int64_t item_bytes_;
    std::int64_t extension_ = 0;
    std::int64_t begin_ = std::numeric_limits<std::int64_t>::max();
    std::int64_t end_ = -1;
};

std::optional<address_range> measure(const std::string& path, std::int64_t item_bytes)
{
    measured_range range{item_bytes};
    file_window file{path};
    for (std::int64_t p = file.find(':', 0); p < file.length(); p = file.find(':', p)) {
        const auto record = file.from(p, longest_intel_record);
        if (const std::size_t run = range.take_run(record); run != 0) {
            p += static_cast<std::int64_t>(run);
            continue;
        }
        const auto head = intel_head_of(record);
        if (!head || head->type == 3 || head->type == 5) {
            ++p;
            continue;
        }
        if (head->type == 1 || head->type > 5) break;
        if (head->type == 0) {
            range.take(*head);
            p += 11 + 2 * std::int64_t{head->length};
            continue;
        }
        std::uint8_t value[2]{};
        unsigned sum = 0;
        if (record.size() < 13 || !hex_digits::decode(&record[9], 2, value, sum)) break;
        range.extension((value[0] * 256 + value[1]) * (head->type == 2 ? 16LL : 65536LL));
        p += 15;
    }
    return range.result();
}

}  // namespace

detection detect_intel(const file_start& file) { return detect(file.bytes, 1); }
detection detect_intel16(const file_start& file) { return detect(file.bytes, 2); }
std::optional<address_range> measure_intel(const std::string& path) { return measure(path, 1); }
std::optional<address_range> measure_intel16(const std::string& path) { return measure(path, 2); }

}  // namespace tamrix
