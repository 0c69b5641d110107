#include "verify/intel_records.h"
#include "verify/plain_records.h"

#include "base/arith.h"

#include <array>

namespace tamrix {

namespace {

// A record in bytes: count, address, type, data, checksum.
constexpr std::size_t data_at = 4;

/// Data that do not pass the end of their 64 KiB.
struct plain_kind {
    std::uint64_t base;
    static constexpr std::size_t head_bytes = data_at, other_bytes = 0;
    static constexpr unsigned good_sum = 0;
    static constexpr char mark[1] = {':'};

    std::uint64_t address(std::uint64_t head, std::size_t length) const
    {
        const std::uint64_t offset = (head >> 8 & 0xFF) << 8 | (head >> 16 & 0xFF), type = head >> 24 & 0xFF;
        return type == 0 && offset + length <= 0x10000 ? base + offset : no_address;
    }
};

}  // namespace

verification intel_records::read()
{
    for (;;) {
        if (unit_ == 1) take_plain_records(plain_kind{base_}, lines_, found_);
        if (!lines_.next()) break;
        take_line();
        if (ended_) break;
    }
    if (ended_) {
        expect_no_more(lines_, found_);
    } else if (!end_met_) {
        found_.remark(in_line(lines_.number() + 1), "the end of the file", "the end record :00000001FF");
    }
    return found_.result();
}

void intel_records::take_line()
{
    const std::string_view text = lines_.text();
    if (!is_whole_line(lines_, found_) || is_blank(text)) return;
    const std::size_t colon = text.find(':');
    if (colon == text.npos) return found_.remark(here(), "a line without \":\"", "a record");
    if (colon != 0) found_.remark(here(), character_text(text, 0), "\":\"");
    const hex_record record{text, colon + 1};
    if (!record.has(data_at, found_, here())) return;
    end_met_ = end_met_ || record[3] == 1;
    const std::size_t payload = payload_of(record);
    const std::size_t checksum_at = data_at + payload;
    if (!record.has(checksum_at + 1, found_, here())) return;
    const bool sound = record.expect_checksum(-record.sum(checksum_at) & 0xFF, checksum_at, found_, here());
    if (sound) record.expect_end_after(checksum_at + 1, found_, here());
    take_record(record, payload, sound);
}

/// Bytes between type and checksum. Where data are words, the other records have been written with a count of bytes or
/// of words.
std::size_t intel_records::payload_of(const hex_record& record) const
{
    const unsigned count = record[0], type = record[3];
    if (type == 0) return count * std::size_t{unit_};
    const bool base = type == 2 || type == 4, start = type == 3 || type == 5;
    const bool of_words = unit_ == 2 && ((base && count == 1) || (start && count == 2));
    return of_words ? 2 * count : count;
}

/// A damaged record is used as far as it can be read. One remark has been made on it, and there are no others.
void intel_records::take_record(const hex_record& record, std::size_t payload, bool sound)
{
    const unsigned type = record[3];
    if (sound && type >= 2 && type <= 5 && record.number(1, 2) != 0) {
        found_.remark(here(), "address " + arith::hex_fixed(record.number(1, 2), 4), "0000");
    }
    switch (type) {
    case 0: return take_data(record, payload);
    case 1:
        if (sound && payload != 0) expect_count(record, 0);
        // In the oldest form of the format, this address is the program's start.
        if (sound && record.number(1, 2) != 0 && !found_.start_address()) {
            found_.start_address() = record.number(1, 2) * unit_;
        }
        ended_ = sound;
        return;
    case 2:
    case 4: return take_base(record, payload, sound);
    case 3:
    case 5: return take_start(record, payload, sound);
    default:
        if (sound) found_.remark(here(), "record type " + arith::hex_fixed(type, 2), "00 to 05");
    }
}

void intel_records::expect_count(const hex_record& record, unsigned expected)
{
    found_.remark(here(), "count " + arith::hex_fixed(record[0], 2), arith::hex_fixed(expected, 2));
}

/// Offsets go round in a segment; linear addresses do so only at their very end. Without a base there are 64 KiB.
void intel_records::take_data(const hex_record& record, std::size_t payload)
{
    std::array<std::uint8_t, 2 * 255> swapped;
    auto bytes = record.bytes(data_at, payload);
    if (unit_ == 2) {
        for (std::size_t i = 0; i < payload; i += 2) {
            swapped[i] = bytes[i + 1];
            swapped[i + 1] = bytes[i];
        }
        bytes = std::span{swapped}.first(payload);
    }
    const bool linear = room_ == address_room::linear;
    const memory_segment room = linear ? memory_segment{0, std::uint64_t{unit_} << 32}
                                       : memory_segment{base_ * unit_, std::uint64_t{unit_} << 16};
    found_.take_in(room, here(), (base_ + record.number(1, 2)) * unit_, bytes);
}

void intel_records::take_base(const hex_record& record, std::size_t payload, bool sound)
{
    if (payload != 2) {
        if (sound) expect_count(record, 2);
        return;
    }
    const bool linear = record[3] == 4;
    room_ = linear ? address_room::linear : address_room::segment;
    base_ = record.number(data_at, 2) << (linear ? 16 : 4);
}

void intel_records::take_start(const hex_record& record, std::size_t payload, bool sound)
{
    if (payload != 4) {
        if (sound) expect_count(record, 4);
        return;
    }
    const std::uint64_t high = record.number(data_at, 2), low = record.number(data_at + 2, 2);
    const std::uint64_t start = record[3] == 3 ? high * 16 + low : high << 16 | low;
    auto& known = found_.start_address();
    if (sound && known && *known != start * unit_) {
        found_.remark(here(), "start address " + arith::hex_fixed(start, 8),
                      "that of an earlier record, " + arith::hex_fixed(*known, 8));
    }
    known = start * unit_;
}

}  // namespace tamrix
