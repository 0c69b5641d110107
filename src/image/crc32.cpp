#include "image/crc32.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace tamrix {

namespace {

/// What a byte that is followed by `n` zero bytes leaves, so that eight bytes are looked up at once.
constexpr auto tables = [] {
    std::array<std::array<std::uint32_t, 256>, 8> made{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) != 0 ? 0xEDB88320u : 0u);
        made[0][byte] = value;
    }
    for (std::size_t n = 1; n < made.size(); ++n) {
        for (std::size_t byte = 0; byte < 256; ++byte)
            made[n][byte] = (made[n - 1][byte] >> 8) ^ made[0][made[n - 1][byte] & 0xFF];
    }
    return made;
}();

}  // namespace

void crc32::add(std::span<const std::uint8_t> bytes)
{
    static_assert(std::endian::native == std::endian::little);
    std::uint32_t state = state_;
    for (; bytes.size() >= 8; bytes = bytes.subspan(8)) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, bytes.data(), sizeof eight);
        eight ^= state;
        state = 0;
        for (std::size_t i = 0; i < 8; ++i) state ^= tables[7 - i][eight >> 8 * i & 0xFF];
    }
    for (const std::uint8_t byte : bytes) state = (state >> 8) ^ tables[0][(state ^ byte) & 0xFF];
    state_ = state;
}

}  // namespace tamrix
