#include "ttl/run/alphabet.h"

#include "base/ascii.h"
#include "base/pin_code.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr bool must_read_high(char letter) { return letter == 'V' || letter == '1' || letter == 'H' || letter == 'Z'; }
constexpr bool must_read_low(char letter) { return letter == 'G' || letter == '0' || letter == 'L'; }

void add_letter(row_bytes& bytes, char letter, const hw::port_bit& bit)
{
    if (add_common_letter(bytes, letter, bit)) return;
    // Meant: the byte becomes all that is expected high so far, and not its own bit alone. The other bits fall on
    // released positions, but they show in the frames.
    bytes.drvdata[bit.port] = static_cast<std::uint8_t>(bytes.expect[bit.port] | bit.mask);
    gain(letter == '1' ? bytes.expect[bit.port] : bytes.drvmask[bit.port], bit.mask);
}

}  // namespace

bool add_common_letter(row_bytes& bytes, char letter, const hw::port_bit& bit)
{
    switch (letter) {
    case 'V':
    case 'H':
    case 'Z':
        gain(bytes.drvmask[bit.port], bit.mask);
        gain(bytes.expect[bit.port], bit.mask);
        return true;
    case 'G':
    case 'L': gain(bytes.drvmask[bit.port], bit.mask); return true;
    case '0': return true;
    case 'C':
        gain(bytes.clkmask[bit.port], bit.mask);
        bytes.hasc = true;
        return true;
    case 'K':
        gain(bytes.clkmask[bit.port], bit.mask);
        bytes.hask = true;
        return true;
    default: return false;
    }
}

row_bytes bytes_of_row(std::string_view row, int pins)
{
    row_bytes bytes;
    const hw::row_span span = hw::span_of_48(pins);
    for (int i = 0; i < span.positions; ++i) add_letter(bytes, letter_at(row, i), hw::bit_of_position(i, span.half));
    return bytes;
}

hw::port_bytes expected_bits(std::string_view row, const hw::row_span& span)
{
    hw::port_bytes expect{};
    for (int i = 0; i < span.positions; ++i) {
        if (!must_read_high(letter_at(row, i))) continue;
        const hw::port_bit bit = hw::bit_of_position(i, span.half);
        gain(expect[bit.port], bit.mask);
    }
    return expect;
}

bool mark_failures(std::string_view row, const hw::row_span& span, const hw::port_bytes& expect,
                   const hw::port_bytes& readback, std::string& result)
{
    bool failed = false;
    for (int i = 0; i < span.positions; ++i) {
        const char letter = letter_at(row, i);
        if (!must_read_high(letter) && !must_read_low(letter)) continue;
        const hw::port_bit bit = hw::bit_of_position(i, span.half);
        if (((expect[bit.port] ^ readback[bit.port]) & bit.mask) == 0) continue;
        failed = true;
        result[static_cast<std::size_t>(i)] = must_read_high(letter) ? 'L' : 'H';
    }
    return failed;
}

std::uint8_t pin_code(std::string_view row0, char letter, int pins)
{
    const auto found = std::ranges::find(row0, ascii::lower(letter), ascii::lower);
    const int place = found == row0.end() ? -1 : static_cast<int>(found - row0.begin());
    return pin_code_of_position(place, pins / 2);
}

}  // namespace tamrix
