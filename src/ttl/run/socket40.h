// The programmers whose socket has 40 positions: the wiring between a device's pins and the byte groups.
#pragma once

#include "ttl/run/alphabet.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

/// Stands in a socket text where no device pin is.
inline constexpr char unused_position = 'w';

/// A device row of an even length up to 40, without blanks around it, as the socket's 40 letters. An odd length comes
/// back unchanged.
std::string tosocket40(std::string_view row);

/// A socket text in the device's order, for the eye only: of devices with 34 to 40 pins it shows the middle 32 letters.
std::string fromsocket40(std::string_view text);

/// One position that the wiring ties to the supply, and which is forced beside the letters.
enum class forced_position : std::uint8_t {
    none,
    from_the_start,  // released, high and expected high before any letter
    with_the_v,      // released where the row has a V
};

/// The socket's 40 letters as bytes; the byte to write is `drvdata` OR `drvmask`.
row_bytes bytes_of_socket_row(std::string_view ttlmap, forced_position forced);

/// As mark_failures, for the socket's 40 letters; `result` becomes them in the device's order.
bool mark_socket_failures(std::string_view ttlmap, const hw::port_bytes& expect, const hw::port_bytes& readback,
                          std::string& result);

}  // namespace tamrix
