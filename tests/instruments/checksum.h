// The CRC-32 of lines of text, as the models of the instruments write it.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace tamrix::tests {

class checksum {
public:
    /// A line, with its end.
    void add(std::string_view line)
    {
        const char* const end = line.data() + line.size();
        for (const char* at = line.data(); at != end; ++at) add_byte(static_cast<std::uint8_t>(*at));
        add_byte('\n');
        ++lines_;
    }
    int lines() const { return lines_; }
    std::string text() const
    {
        char digits[12];
        std::snprintf(digits, sizeof digits, "%08X", ~crc_);
        return digits;
    }

private:
    void add_byte(std::uint8_t byte)
    {
        static constexpr auto table = [] {
            std::array<std::uint32_t, 256> made{};
            for (std::uint32_t i = 0; i < made.size(); ++i) {
                made[i] = i;
                for (int bit = 0; bit < 8; ++bit) made[i] = (made[i] >> 1) ^ ((made[i] & 1U) != 0 ? 0xEDB88320U : 0U);
            }
            return made;
        }();
        crc_ = (crc_ >> 8U) ^ table.data()[(crc_ ^ byte) & 0xFFU];
    }

    std::uint32_t crc_ = 0xFFFFFFFF;
    int lines_ = 0;
};

}  // namespace tamrix::tests
