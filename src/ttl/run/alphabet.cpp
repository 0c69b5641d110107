#include "ttl/run/alphabet.h"

#include "base/errors.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr bool must_read_high(char letter) { return letter == 'V' || letter == '1' || letter == 'H' || letter == 'Z'; }
constexpr bool must_read_low(char letter) { return letter == 'G' || letter == '0' || letter == 'L'; }

void add_letter(row_bytes& bytes, char letter, const socket_bit& bit)
{
    if (add_common_letter(bytes, letter, bit)) return;
    // Meant: the byte becomes all that is expected high so far, and not its own bit alone. The other bits fall on
    // released positions, but they show in the frames.
    bytes.drvdata[bit.group] = static_cast<std::uint8_t>(bytes.expect[bit.group] | bit.value);
    gain(letter == '1' ? bytes.expect[bit.group] : bytes.drvmask[bit.group], bit.value);
}

}  // namespace

socket_bit bit_of_position(int i, int half)
{
    const int down = half - 1 - i;  // positions above the bottom of the left column
    const int group = i < half ? down / 4 : (i - half) / 4;
    const int bit = i < half ? 3 - down % 4 : 4 + (i - half) % 4;
    if (i < 0 || group >= static_cast<int>(byte_groups))
        throw subscript_error{"no socket position for letter " + std::to_string(i + 1) + " of a vector"};
    return {.group = static_cast<std::size_t>(group), .value = static_cast<std::uint8_t>(1 << bit)};
}

bool add_common_letter(row_bytes& bytes, char letter, const socket_bit& bit)
{
    switch (letter) {
    case 'V':
    case 'H':
    case 'Z':
        gain(bytes.drvmask[bit.group], bit.value);
        gain(bytes.expect[bit.group], bit.value);
        return true;
    case 'G':
    case 'L': gain(bytes.drvmask[bit.group], bit.value); return true;
    case '0': return true;
    case 'C':
        gain(bytes.clkmask[bit.group], bit.value);
        bytes.hasc = true;
        return true;
    case 'K':
        gain(bytes.clkmask[bit.group], bit.value);
        bytes.hask = true;
        return true;
    default: return false;
    }
}

row_bytes bytes_of_row(std::string_view row, int pins)
{
    row_bytes bytes;
    const row_span span = span_of_48(pins);
    for (int i = 0; i < span.positions; ++i) add_letter(bytes, letter_at(row, i), bit_of_position(i, span.half));
    return bytes;
}

group_bytes expected_bits(std::string_view row, const row_span& span)
{
    group_bytes expect{};
    for (int i = 0; i < span.positions; ++i) {
        if (!must_read_high(letter_at(row, i))) continue;
        const socket_bit bit = bit_of_position(i, span.half);
        gain(expect[bit.group], bit.value);
    }
    return expect;
}

bool mark_failures(std::string_view row, const row_span& span, const group_bytes& expect, const group_bytes& readback,
                   std::string& result)
{
    bool failed = false;
    for (int i = 0; i < span.positions; ++i) {
        const char letter = letter_at(row, i);
        if (!must_read_high(letter) && !must_read_low(letter)) continue;
        const socket_bit bit = bit_of_position(i, span.half);
        if (((expect[bit.group] ^ readback[bit.group]) & bit.value) == 0) continue;
        failed = true;
        result[static_cast<std::size_t>(i)] = must_read_high(letter) ? 'L' : 'H';
    }
    return failed;
}

std::uint8_t pin_code(std::string_view row0, char letter, int pins)
{
    const auto found = std::ranges::find(row0, lower(letter), lower);
    const int place = found == row0.end() ? -1 : static_cast<int>(found - row0.begin());
    const int half = pins / 2;
    return static_cast<std::uint8_t>(place < half ? half - place : place - half + 101);
}

}  // namespace tamrix
