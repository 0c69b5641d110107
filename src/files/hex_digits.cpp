#include "files/hex_digits.h"

#include "files/hex_digits_sse2.h"

#include <array>
#include <cstring>

namespace tamrix::hex_digits {

namespace {

constexpr auto pairs = [] {
    std::array<std::array<char, 2>, 256> table{};
    for (int i = 0; i < 256; ++i) table[i] = {"0123456789ABCDEF"[i / 16], "0123456789ABCDEF"[i % 16]};
    return table;
}();

#if defined(__SSE2__)

using namespace detail;

/// Blocks of 16 bytes as long as they are complete and good; returns how many bytes were decoded.
std::size_t decode_blocks(const std::uint8_t* text, std::size_t count, std::uint8_t* target, unsigned& sum)
{
    std::size_t done = 0;
    for (; done + 16 <= count; done += 16) {
        __m128i bad_first, bad_second;
        const __m128i first = sixteen_values(text + 2 * done, bad_first);
        const __m128i second = sixteen_values(text + 2 * done + 16, bad_second);
        if (_mm_movemask_epi8(_mm_or_si128(bad_first, bad_second)) != 0) break;
        const __m128i bytes = _mm_packus_epi16(joined(first), joined(second));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target + done), bytes);
        sum += byte_sum(bytes);
    }
    return done;
}

std::size_t encode_blocks(const std::uint8_t* bytes, std::size_t count, char* text, unsigned& sum)
{
    std::size_t done = 0;
    for (; done + 16 <= count; done += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + done));
        encode_sixteen(block, text + 2 * done);
        sum += byte_sum(block);
    }
    return done;
}

#else

std::size_t decode_blocks(const std::uint8_t*, std::size_t, std::uint8_t*, unsigned&) { return 0; }
std::size_t encode_blocks(const std::uint8_t*, std::size_t, char*, unsigned&) { return 0; }

#endif

}  // namespace

bool decode(const std::uint8_t* text, std::size_t count, std::uint8_t* target, unsigned& sum)
{
    unsigned added = 0;
    std::size_t done = decode_blocks(text, count, target, added);
    for (; done + 4 <= count; done += 4) {
        const auto four = decode_four(text + 2 * done);
        if (!four) return false;
        std::memcpy(target + done, &*four, sizeof *four);
        const std::uint32_t halves = (*four & 0x00FF00FFu) + ((*four >> 8) & 0x00FF00FFu);
        added += (halves & 0xFFFF) + (halves >> 16);
    }
    for (; done < count; ++done) {
        const int value = byte(text + 2 * done);
        if (value < 0) return false;
        target[done] = static_cast<std::uint8_t>(value);
        added += static_cast<unsigned>(value);
    }
    sum += added;
    return true;
}

char* encode(const std::uint8_t* bytes, std::size_t count, char* text, unsigned& sum)
{
    for (std::size_t i = encode_blocks(bytes, count, text, sum); i < count; ++i) {
        sum += bytes[i];
        std::memcpy(text + 2 * i, pairs[bytes[i]].data(), 2);
    }
    return text + 2 * count;
}

char* encode_number(std::uint64_t value, int digits, char* text)
{
    for (int i = digits - 1; i >= 0; --i, value >>= 4) text[i] = pairs[value & 15][1];
    return text + digits;
}

}  // namespace tamrix::hex_digits
