// A whole record of digits at once: its head, its data and its checksum.
#pragma once

#include "files/hex_digits.h"
#include "files/hex_digits_sse2.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace tamrix::hex_digits {

/// Characters that decode_record() may read after the record, and bytes that it may write after the data.
inline constexpr std::size_t room_after_record = 32, room_after_data = 16;

#if defined(__SSE2__)

namespace detail {

inline constexpr auto byte_masks = [] {
    std::array<std::uint8_t, 32> table{};
    for (std::size_t i = 0; i < 16; ++i) table[i] = 0xFF;
    return table;
}();

inline __m128i first_bytes(__m128i bytes, std::size_t count)
{
    const auto* const mask = reinterpret_cast<const __m128i*>(byte_masks.data() + 16 - count);
    return _mm_and_si128(bytes, _mm_loadu_si128(mask));
}

/// The bytes of 32 digits, or of the first 16 where that is enough for `count`, which is at least 1. Only the first
/// `count` of them have to be good; they are added to `sums`.
inline bool decode_some(const std::uint8_t* text, std::size_t count, __m128i& bytes_out, __m128i& sums)
{
    __m128i bad_first, bad_second = _mm_setzero_si128(), second = bad_second;
    const __m128i first = sixteen_values(text, bad_first);
    if (count > 8) second = sixteen_values(text + 16, bad_second);
    bytes_out = _mm_packus_epi16(joined(first), joined(second));
    if (count >= 16) {
        sums = _mm_add_epi32(sums, _mm_sad_epu8(bytes_out, _mm_setzero_si128()));
        return _mm_movemask_epi8(_mm_or_si128(bad_first, bad_second)) == 0;
    }
    sums = _mm_add_epi32(sums, _mm_sad_epu8(first_bytes(bytes_out, count), _mm_setzero_si128()));
    const unsigned bad = static_cast<unsigned>(_mm_movemask_epi8(bad_first)) |
                         static_cast<unsigned>(_mm_movemask_epi8(bad_second)) << 16;
    return (bad & ((1u << 2 * count) - 1)) == 0;
}

}  // namespace detail

#endif

/// Decodes `head_bytes` (1 to 8), `length` bytes of data and a checksum. The data go to `target`, the head to
/// `head_out` with its first byte lowest, and the sum of all to `sum_out`. False at a character that is no digit.
/// Always in line: in a loop over records the constants then stay in registers.
template <std::size_t head_bytes>
[[gnu::always_inline]] inline bool decode_record(const std::uint8_t* text, std::size_t length, std::uint8_t* target,
                                                 std::uint64_t& head_out, unsigned& sum_out)
{
    std::size_t left = head_bytes + length + 1;
#if defined(__SSE2__)
    __m128i bytes, sums = _mm_setzero_si128();
    if (!detail::decode_some(text, left, bytes, sums)) return false;
    _mm_storel_epi64(reinterpret_cast<__m128i*>(&head_out), bytes);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm_srli_si128(bytes, head_bytes));
    for (target -= head_bytes; left > 16;) {
        left -= 16;
        text += 32;
        target += 16;
        if (!detail::decode_some(text, left, bytes, sums)) return false;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target), bytes);
    }
    sum_out = static_cast<unsigned>(_mm_cvtsi128_si32(sums) + _mm_extract_epi16(sums, 4));
    return true;
#else
    std::array<std::uint8_t, 8 + 255 + 1> all{};
    sum_out = 0;
    if (left > all.size() || !decode(text, left, all.data(), sum_out)) return false;
    std::memcpy(&head_out, all.data(), sizeof head_out);
    std::memcpy(target, all.data() + head_bytes, length);
    return true;
#endif
}

/// Characters that encode_record() may write after the record.
inline constexpr std::size_t room_after_digits = 32;

/// Writes the digits of the low `head_bytes` (1 to 8) of `head`, its lowest byte first and 0 above them, of the data
/// and of the checksum, with which the low byte of the sum of all is `good_sum`. Returns their end.
template <std::size_t head_bytes>
char* encode_record(std::uint64_t head, std::span<const std::uint8_t> data, unsigned good_sum, char* text)
{
    unsigned sum = 0;
#if defined(__SSE2__)
    const __m128i head_block = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&head));
    detail::encode_sixteen(head_block, text);
    sum = detail::byte_sum(head_block);
#else
    std::array<std::uint8_t, 8> bytes;
    std::memcpy(bytes.data(), &head, sizeof head);
    encode(bytes.data(), head_bytes, text, sum);
#endif
    char* const end = encode(data.data(), data.size(), text + 2 * head_bytes, sum);
    return encode_number(good_sum - sum, 2, end);
}

}  // namespace tamrix::hex_digits
