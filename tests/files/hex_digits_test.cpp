#include "files/hex_digits.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

std::string slow_text(const bytes_of& bytes, bool upper)
{
    std::string text;
    for (const auto byte : bytes) {
        char pair[3];
        std::snprintf(pair, sizeof pair, upper ? "%02X" : "%02x", byte);
        text += pair;
    }
    return text;
}

bool decode(const std::string& text, bytes_of& bytes, unsigned& sum)
{
    return hex_digits::decode(reinterpret_cast<const std::uint8_t*>(text.data()), bytes.size(), bytes.data(), sum);
}

TEST(hex_digits, text_of_every_length_and_case_decodes_with_its_sum)
{
    for (std::size_t count = 0; count < 100; ++count) {
        const bytes_of expected = random_bytes(count, static_cast<unsigned>(count));
        unsigned expected_sum = 5;
        for (const auto byte : expected) expected_sum += byte;
        for (const bool upper : {true, false}) {
            bytes_of bytes(count);
            unsigned sum = 5;
            ASSERT_TRUE(decode(slow_text(expected, upper), bytes, sum)) << count;
            ASSERT_EQ(bytes, expected);
            ASSERT_EQ(sum, expected_sum);
        }
    }
}

TEST(hex_digits, every_character_at_every_place_is_a_digit_or_is_refused)
{
    const bytes_of good = random_bytes(39);
    const std::string text = slow_text(good, true);
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (int character = 0; character < 256; ++character) {
            std::string changed = text;
            changed[at] = static_cast<char>(character);
            bytes_of bytes(39);
            unsigned sum = 0;
            ASSERT_EQ(decode(changed, bytes, sum), std::isxdigit(character) != 0) << at << ' ' << character;
        }
    }
}

TEST(hex_digits, nothing_at_or_behind_a_bad_character_is_written)
{
    const bytes_of good(39, 0x11);
    for (std::size_t bad = 0; bad < 39; ++bad) {
        std::string text = slow_text(good, true);
        text[2 * bad] = '-';
        bytes_of bytes(39, 0xAA);
        unsigned sum = 7;
        ASSERT_FALSE(decode(text, bytes, sum));
        ASSERT_EQ(sum, 7u);
        for (std::size_t at = bad; at < 39; ++at) ASSERT_EQ(bytes[at], 0xAA);
    }
}

TEST(hex_digits, bytes_of_every_length_encode_in_upper_case_with_their_sum)
{
    for (std::size_t count = 0; count < 100; ++count) {
        const bytes_of bytes = random_bytes(count, static_cast<unsigned>(count));
        std::string text(2 * count, '\0');
        unsigned sum = 0, expected_sum = 0;
        for (const auto byte : bytes) expected_sum += byte;
        EXPECT_EQ(hex_digits::encode(bytes.data(), count, text.data(), sum), text.data() + text.size());
        ASSERT_EQ(text, slow_text(bytes, true));
        ASSERT_EQ(sum, expected_sum);
    }
}

TEST(hex_digits, a_number_keeps_its_low_digits)
{
    std::string text(4, '\0');
    hex_digits::encode_number(0x12ABCD, 4, text.data());
    EXPECT_EQ(text, "ABCD");
    hex_digits::encode_number(7, 4, text.data());
    EXPECT_EQ(text, "0007");
}

}  // namespace
}  // namespace tamrix::tests
