// Sound data records that go on where the one ahead of them ended, as nearly all records of a large file do: read
// straight from the block of the file into that of the data. All else is left to the reading by lines.
#pragma once

#include "verify/findings.h"
#include "verify/record_lines.h"

#include "files/hex_record_digits.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tamrix {

inline constexpr std::uint64_t no_address = ~std::uint64_t{0};

/// The outside of a record. Most are as the one ahead of them, and a step to the next one that is known without a look
/// at this one lets the processor work at several at a time.
struct plain_shape {
    std::uint16_t count_digits = 0;
    std::uint16_t line_end = 0, line_end_mask = 0;
    std::size_t length = 0;  // bytes of data
    std::size_t digits = 0;  // characters, mark included
    std::size_t with_line_end = 0;
};

inline std::uint16_t two_characters(const std::uint8_t* text)
{
    std::uint16_t both = 0;
    std::memcpy(&both, text, sizeof both);
    return both;
}

template <typename record_kind>
bool has_shape(const record_kind& kind, const std::uint8_t* text, const plain_shape& shape)
{
    return two_characters(text + sizeof kind.mark) == shape.count_digits &&
           (two_characters(text + shape.digits) & shape.line_end_mask) == shape.line_end;
}

/// A length of 0 where the record has another line end than LF or CR LF, or no data.
template <typename record_kind>
plain_shape shape_of(const record_kind& kind, const std::uint8_t* text)
{
    plain_shape shape;
    const int length = hex_digits::byte(text + sizeof kind.mark) - static_cast<int>(kind.other_bytes);
    if (length <= 0) return shape;
    shape.count_digits = two_characters(text + sizeof kind.mark);
    shape.digits = sizeof kind.mark + 2 * (kind.head_bytes + static_cast<std::size_t>(length) + 1);
    const bool two = text[shape.digits] == '\r';
    shape.line_end_mask = two ? 0xFFFF : 0x00FF;
    shape.line_end = two ? two_characters(reinterpret_cast<const std::uint8_t*>("\r\n")) : std::uint16_t{'\n'};
    shape.with_line_end = shape.digits + (two ? 2 : 1);
    if (has_shape(kind, text, shape)) shape.length = static_cast<std::size_t>(length);
    return shape;
}

/// What `record_kind` has:
///   mark: the characters ahead of the digits
///   head_bytes: of the count and what else is ahead of the data
///   other_bytes: of those that the count counts, how many are no data
///   good_sum: the low byte of the sum of all bytes, the checksum included
///   address(head, length): no_address where it is another record; the first byte of the head is the lowest
template <typename record_kind>
bool take_plain_record(const record_kind& kind, const std::uint8_t* text, plain_shape& shape, findings::run_tail& run)
{
    if (std::memcmp(text, kind.mark, sizeof kind.mark) != 0) return false;
    if (!has_shape(kind, text, shape)) shape = shape_of(kind, text);
    if (shape.length == 0 || shape.length > run.left) return false;
    std::uint64_t head = 0;
    unsigned sum = 0;
    const std::uint8_t* const digits = text + sizeof kind.mark;
    if (!hex_digits::decode_record<record_kind::head_bytes>(digits, shape.length, run.next, head, sum)) return false;
    if ((sum & 0xFF) != kind.good_sum || kind.address(head, shape.length) != run.address) return false;
    run.grow(shape.length);
    return true;
}

/// Returns how many records were taken.
template <typename record_kind>
std::uint64_t take_plain_records(const record_kind& kind, record_lines& lines, findings& found)
{
    constexpr std::size_t longest = 2 + 2 * (4 + 255 + 1) + hex_digits::room_after_record;
    std::uint64_t all = 0;
    for (plain_shape shape;;) {
        const auto text = lines.ahead();
        const std::uint8_t* at = text.data();
        const std::uint8_t* const last = at + text.size();
        findings::run_tail run = found.tail();
        std::uint64_t count = 0;
        while (static_cast<std::size_t>(last - at) >= longest && take_plain_record(kind, at, shape, run)) {
            at += shape.with_line_end;
            ++count;
        }
        found.keep(run);
        lines.pass(static_cast<std::size_t>(at - text.data()), count);
        if (count == 0) return all;
        all += count;
    }
}

}  // namespace tamrix
