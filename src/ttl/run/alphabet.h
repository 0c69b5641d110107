// The letters of a test vector and the bytes that they become: what drives the socket, what must be read back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

/// Eight socket positions each: four of the left column in the low nibble, four of the right one in the high nibble;
/// group 0 stands at the socket's bottom.
inline constexpr std::size_t byte_groups = 6;

struct socket_bit {
    std::size_t group;
    std::uint8_t value;
};

/// Where position `i` of a row (from 0) stands, with `half` positions a column. Throws subscript_error outside the six
/// groups.
socket_bit bit_of_position(int i, int half);

/// A row as bytes, by group.
struct row_bytes {
    std::array<std::uint8_t, byte_groups> drvdata{};  // driven high
    std::array<std::uint8_t, byte_groups> drvmask{};  // released: inputs of the tester
    std::array<std::uint8_t, byte_groups> clkmask{};  // C or K
    std::array<std::uint8_t, byte_groups> expect{};   // must read high
    bool hasc = false, hask = false;
};

using group_bytes = std::array<std::uint8_t, byte_groups>;

inline void gain(std::uint8_t& byte, std::uint8_t bits) { byte = static_cast<std::uint8_t>(byte | bits); }

/// The letters that mean the same on every socket. False for '1' and for what is no letter, which add nothing yet.
bool add_common_letter(row_bytes& bytes, char letter, const socket_bit& bit);

/// For 48 positions: the row in device order.
row_bytes bytes_of_row(std::string_view row, int pins);

/// How the positions of a row map to the socket, and how many of them count.
struct row_span {
    int positions, half;
};
constexpr row_span span_of_48(int pins) { return {.positions = pins, .half = pins / 2}; }
inline constexpr row_span span_of_40{.positions = 40, .half = 20};

/// The bits that a script's results are compared with.
group_bytes expected_bits(std::string_view row, const row_span& span);

/// Compares what was read with what must be. True where a position failed; its letter in `result`, a copy of the row,
/// then tells the level that was seen.
bool mark_failures(std::string_view row, const row_span& span, const group_bytes& expect, const group_bytes& readback,
                   std::string& result);

/// The number of a socket position, from the place of the first `letter` in row 0, without regard to case: from 1 up
/// the left column, from 101 up the right one. A row without the letter yields the code that comes out for place -1,
/// meant.
std::uint8_t pin_code(std::string_view row0, char letter, int pins);

/// Letter `i` of a row, NUL behind its end.
inline char letter_at(std::string_view row, int i)
{
    return i >= 0 && static_cast<std::size_t>(i) < row.size() ? row[static_cast<std::size_t>(i)] : '\0';
}

}  // namespace tamrix
