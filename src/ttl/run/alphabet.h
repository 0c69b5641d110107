// The letters of a test vector and the bytes that they become: what drives the socket, what must be read back.
#pragma once

#include "channel/pin_map.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

/// A row as bytes, by port.
struct row_bytes {
    hw::port_bytes drvdata{};  // driven high
    hw::port_bytes drvmask{};  // released: inputs of the tester
    hw::port_bytes clkmask{};  // C or K
    hw::port_bytes expect{};   // must read high
    bool hasc = false, hask = false;
};

inline void gain(std::uint8_t& byte, std::uint8_t bits) { byte = static_cast<std::uint8_t>(byte | bits); }

/// The letters that mean the same on every socket. False for '1' and for what is no letter, which add nothing yet.
bool add_common_letter(row_bytes& bytes, char letter, const hw::port_bit& bit);

/// For 48 positions: the row in device order.
row_bytes bytes_of_row(std::string_view row, int pins);

/// The bits that a script's results are compared with.
hw::port_bytes expected_bits(std::string_view row, const hw::row_span& span);

/// Compares what was read with what must be. True where a position failed; its letter in `result`, a copy of the row,
/// then says which level was seen.
bool mark_failures(std::string_view row, const hw::row_span& span, const hw::port_bytes& expect,
                   const hw::port_bytes& readback, std::string& result);

/// The number of a socket position, from the place of the first `letter` in row 0, without regard to case: from 1 up
/// the left column, from 101 up the right one. Intentional: a row without the letter gives the code of place -1.
std::uint8_t pin_code(std::string_view row0, char letter, int pins);

/// Letter `i` of a row, NUL after its end.
inline char letter_at(std::string_view row, int i)
{
    return i >= 0 && static_cast<std::size_t>(i) < row.size() ? row[static_cast<std::size_t>(i)] : '\0';
}

}  // namespace tamrix
