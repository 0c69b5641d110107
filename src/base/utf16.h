// Converts between UTF-8, the encoding of all texts inside, and the 16-bit units of a Windows host.
#pragma once

#include "base/utf8.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tamrix::utf16 {

/// A byte that starts no character becomes U+FFFD.
template <class Unit>
std::basic_string<Unit> from_utf8(std::string_view text)
{
    static_assert(sizeof(Unit) == 2);
    std::basic_string<Unit> result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto [code, length] = utf8::decode(text, at);
        at += length;
        const bool surrogate = code >= 0xD800 && code < 0xE000;
        if (code >= 0x10000) {
            result.push_back(static_cast<Unit>(0xD800 + ((code - 0x10000) >> 10)));
            result.push_back(static_cast<Unit>(0xDC00 + ((code - 0x10000) & 0x3FF)));
        } else {
            result.push_back(static_cast<Unit>(surrogate ? 0xFFFD : code));
        }
    }
    return result;
}

inline void append_utf8(std::string& text, char32_t code)
{
    const auto tail = [&](int shift) { text.push_back(static_cast<char>(0x80 | (code >> shift & 0x3F))); };
    if (code < 0x80) {
        text.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        text.push_back(static_cast<char>(0xC0 | code >> 6));
        tail(0);
    } else if (code < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | code >> 12));
        tail(6);
        tail(0);
    } else {
        text.push_back(static_cast<char>(0xF0 | code >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

/// Half a pair of units becomes U+FFFD.
template <class Unit>
std::string to_utf8(std::basic_string_view<Unit> text)
{
    static_assert(sizeof(Unit) == 2);
    const auto unit = [&](std::size_t at) { return static_cast<char32_t>(static_cast<char16_t>(text[at])); };
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t code = unit(at);
        const bool leads = code >= 0xD800 && code < 0xDC00;
        if (leads && at + 1 < text.size() && unit(at + 1) >= 0xDC00 && unit(at + 1) < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (unit(++at) - 0xDC00);
        } else if (code >= 0xD800 && code < 0xE000) {
            code = 0xFFFD;
        }
        append_utf8(result, code);
    }
    return result;
}

}  // namespace tamrix::utf16
