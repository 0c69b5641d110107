// What can be known about a Motorola S file without loading it.
#include "files/file_window.h"
#include "files/hex_digits.h"
#include "formats/motorola.h"

#include <algorithm>
#include <array>

namespace tamrix {

namespace {

struct motorola_head {
    std::size_t address_bytes;
    std::int64_t address;
    std::int64_t data_bytes;
};

/// The head of a data record, S1 to S3, that starts at the front of `text`.
std::optional<motorola_head> data_head(std::span<const std::uint8_t> text)
{
    if (text.size() < 2 || text[0] != 'S' || text[1] < '1' || text[1] > '3') return std::nullopt;
    const std::size_t address_bytes = text[1] - std::size_t{'0'} + 1;
    std::array<std::uint8_t, 5> field{};
    unsigned sum = 0;
    if (text.size() < 4 + 2 * address_bytes || !hex_digits::decode(&text[2], 1 + address_bytes, field.data(), sum)) {
        return std::nullopt;
    }
    std::int64_t address = 0;
    for (std::size_t i = 1; i <= address_bytes; ++i) address = address * 256 + field[i];
    return motorola_head{address_bytes, address, std::int64_t{field[0]} - static_cast<std::int64_t>(address_bytes) - 1};
}

/// The low byte of the sum of everything after the type, 0xFF if the record is good; none if it is cut.
std::optional<unsigned> record_sum(std::span<const std::uint8_t> text)
{
    const int count = text.size() < 4 ? -1 : hex_digits::byte(&text[2]);
    std::array<std::uint8_t, 256> bytes{};
    unsigned sum = 0;
    if (count < 0 || text.size() < 4 + 2 * static_cast<std::size_t>(count) ||
        !hex_digits::decode(&text[2], static_cast<std::size_t>(count) + 1, bytes.data(), sum)) {
        return std::nullopt;
    }
    return sum & 0xFF;
}

}  // namespace

/// The first line that looks like a record decides.
detection detect_motorola(const file_start& file)
{
    const auto head = file.bytes;
    for (std::size_t p = 0; p + 1 < head.size(); ++p) {
        const bool starts_line = p == 0 || head[p - 1] == '\n' || head[p - 1] == '\r';
        if (!starts_line || head[p] != 'S' || head[p + 1] < '0' || head[p + 1] > '9') continue;
        const auto record = head.subspan(p);
        if (record_sum(record) == 0xFFu) return detection::mine;
        if (data_head(record)) return detection::damaged;
    }
    return detection::no;
}

namespace {

/// Adds the data records that start from `p` on and before `end`, as far as a reader would read.
void walk(file_window& file, address_extent& filled, std::int64_t p, std::int64_t end)
{
    for (p = file.find('S', p); p < end; p = file.find('S', p)) {
        const auto record = file.from(p, 16);
        if (const auto head = data_head(record)) {
            const std::int64_t length = std::max<std::int64_t>(head->data_bytes, 0);
            filled.add(head->address, length);
            p += 4 + 2 * static_cast<std::int64_t>(head->address_bytes) + 2 * length;
        } else if (record.size() > 1 && record[1] == '0') {
            p += 2;
        } else {
            return;  // the end of the file, or what the reader fails at
        }
    }
}

}  // namespace

std::optional<address_range> measure_motorola(const std::string& path)
{
    file_window file{path};
    address_extent filled;
    walk(file, filled, 0, file.length());
    return filled.range();
}

std::optional<address_range> estimate_motorola(const std::string& path)
{
    file_window file{path};
    if (file.length() < shortest_estimated_bytes) return std::nullopt;
    address_extent filled;
    walk(file, filled, 0, estimate_part_bytes);
    walk(file, filled, file.find('\n', file.length() - estimate_part_bytes), file.length());
    return filled.range();
}

}  // namespace tamrix
