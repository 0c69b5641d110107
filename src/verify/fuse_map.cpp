#include "verify/fuse_map.h"

namespace tamrix {

std::uint16_t fuse_checksum(const std::vector<std::uint8_t>& fuses)
{
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < fuses.size(); ++at) sum += static_cast<std::uint32_t>(fuses[at]) << (at % 8);
    return static_cast<std::uint16_t>(sum);
}

std::uint16_t transmission_checksum(const std::string& text)
{
    std::uint32_t sum = 0;
    for (const char one : text) sum += static_cast<std::uint8_t>(one) & 0x7F;
    return static_cast<std::uint16_t>(sum);
}

}  // namespace tamrix
