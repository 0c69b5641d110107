// Strict reading of JEDEC texts in a test, and their checksums.
#pragma once

#include "verify/jedec.h"
#include "verify/memory_reading.h"

#include <cstdio>
#include <string>

namespace tamrix::tests {

inline jedec_reading read_fuses(const std::string& text, std::size_t piece = 65536)
{
    piecemeal_source from{text, piece};
    return verify_jedec(from, "a.jed");
}

inline texts jedec_remarks(const std::string& text) { return texts_of(read_fuses(text)); }

/// A text between STX and ETX, without a computed checksum.
inline std::string framed(const std::string& text) { return "\x02" + text + "\x03" + "0000"; }

/// The checksums as anybody would add them up who knows nothing of this program.
inline unsigned slow_fuse_sum(const std::string& bits)
{
    unsigned sum = 0;
    for (std::size_t first = 0; first < bits.size(); first += 8) {
        unsigned byte = 0;
        for (std::size_t bit = 0; bit < 8; ++bit)
            if (first + bit < bits.size() && bits[first + bit] == '1') byte |= 1u << bit;
        sum = (sum + byte) % 0x10000;
    }
    return sum;
}

inline unsigned slow_text_sum(const std::string& text)
{
    unsigned sum = 0;
    for (std::size_t at = text.find('\x02'); at <= text.find('\x03'); ++at)
        sum = (sum + static_cast<unsigned char>(text[at]) % 0x80) % 0x10000;
    return sum;
}

inline std::string hex4(unsigned value)
{
    char text[8];
    std::snprintf(text, sizeof text, "%04X", value);
    return text;
}

}  // namespace tamrix::tests
