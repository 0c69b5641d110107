// What hosts say about addresses and counts of bytes.
#pragma once

#include "image/segments.h"

#include <cstdint>
#include <string>

namespace tamrix::host {

/// "0x8000000".
std::string address_text(std::uint64_t address);
/// "0x0 to 0x1FF".
std::string range_text(const memory_segment& range);
/// "512 bytes", "1 byte".
std::string bytes_text(std::uint64_t count);
/// "512 bytes, 0x0 to 0x1FF", "40 bytes in 2 segments, 0x0 to 0x8013", "no bytes".
std::string extent_text(const segment_list& filled);
/// "1 place", "12 places".
std::string places_text(std::uint64_t count);

}  // namespace tamrix::host
