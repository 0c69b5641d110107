// UTF-8 one character at a time.
#pragma once

#include <cstddef>
#include <string_view>

namespace tamrix::utf8 {

struct character {
    char32_t code;       // U+FFFD for a byte that starts no character
    std::size_t length;  // in bytes, at least 1
};

/// The character that starts at byte `at`, which must lie inside `text`.
inline character decode(std::string_view text, std::size_t at)
{
    constexpr character broken{0xFFFD, 1};
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) return {lead, 1};
    if (lead < 0xC2 || lead > 0xF4) return broken;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (at + length > text.size()) return broken;
    auto code = static_cast<char32_t>(lead & (0xFF >> (length + 1)));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0) != 0x80) return broken;
        code = code << 6 | (next & 0x3F);
    }
    return {code, length};
}

}  // namespace tamrix::utf8
