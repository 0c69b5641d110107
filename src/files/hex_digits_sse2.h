// Sixteen digits or bytes at once, where the processor can.
#pragma once

#if defined(__SSE2__)

#include <cstdint>

#include <emmintrin.h>

namespace tamrix::hex_digits::detail {

/// The values of 16 digits, one a byte. The top bit of a byte of `bad_out` is set where a character is no digit.
inline __m128i sixteen_values(const std::uint8_t* text, __m128i& bad_out)
{
    const __m128i characters = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    // Digits and what is above them come to 0xF6 to 0xFF; all but digits are then far from 0 to 9.
    const __m128i high =
        _mm_subs_epu8(_mm_add_epi8(characters, _mm_set1_epi8(static_cast<char>(0xFF - '9'))), _mm_set1_epi8(6));
    const __m128i as_digit = _mm_sub_epi8(high, _mm_set1_epi8(static_cast<char>(0xF0)));
    const __m128i upper_case = _mm_and_si128(characters, _mm_set1_epi8(static_cast<char>(0xDF)));
    const __m128i as_letter = _mm_adds_epu8(_mm_sub_epi8(upper_case, _mm_set1_epi8('A')), _mm_set1_epi8(10));
    const __m128i digit_values = _mm_min_epu8(as_digit, as_letter);
    bad_out = _mm_adds_epu8(digit_values, _mm_set1_epi8(0x7F - 15));
    return digit_values;
}

/// Pairs of values, high digit first, as bytes in 16-bit lanes.
inline __m128i joined(__m128i digit_values)
{
    const __m128i high = _mm_slli_epi16(_mm_and_si128(digit_values, _mm_set1_epi16(0x00FF)), 4);
    return _mm_or_si128(high, _mm_srli_epi16(digit_values, 8));
}

inline __m128i as_text(__m128i nibbles)
{
    const __m128i letters = _mm_and_si128(_mm_cmpgt_epi8(nibbles, _mm_set1_epi8(9)), _mm_set1_epi8('A' - '9' - 1));
    return _mm_add_epi8(_mm_add_epi8(nibbles, _mm_set1_epi8('0')), letters);
}

/// Writes 32 upper-case digits.
inline void encode_sixteen(__m128i bytes, char* text)
{
    const __m128i low_nibbles = _mm_set1_epi8(0x0F);
    const __m128i high = as_text(_mm_and_si128(_mm_srli_epi16(bytes, 4), low_nibbles));
    const __m128i low = as_text(_mm_and_si128(bytes, low_nibbles));
    auto* const target = reinterpret_cast<__m128i*>(text);
    _mm_storeu_si128(target, _mm_unpacklo_epi8(high, low));
    _mm_storeu_si128(target + 1, _mm_unpackhi_epi8(high, low));
}

inline unsigned byte_sum(__m128i bytes)
{
    const __m128i sums = _mm_sad_epu8(bytes, _mm_setzero_si128());
    return static_cast<unsigned>(_mm_cvtsi128_si32(sums) + _mm_extract_epi16(sums, 4));
}

}  // namespace tamrix::hex_digits::detail

#endif
