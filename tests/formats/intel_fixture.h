// Loads records of the Intel format.
#pragma once

#include "formats/load_fixture.h"

#include <string>
#include <vector>

namespace tamrix::tests {

/// A record with a right checksum.
inline std::string record(unsigned address, unsigned type, const std::vector<std::uint8_t>& data)
{
    unsigned sum = static_cast<unsigned>(data.size()) + (address >> 8) + (address & 0xFF) + type;
    std::string text = ":" + hex2(static_cast<unsigned>(data.size())) + hex2(address >> 8) + hex2(address) + hex2(type);
    for (const auto byte : data) {
        text += hex2(byte);
        sum += byte;
    }
    return text + hex2(0x100 - (sum & 0xFF)) + "\r\n";
}

inline const std::string end_record = ":00000001FF\r\n";

struct intel_fixture : format_fixture {
    explicit intel_fixture(const device& chosen = {}) : format_fixture{1, chosen} {}
};

}  // namespace tamrix::tests
