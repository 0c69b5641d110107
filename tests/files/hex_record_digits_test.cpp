#include "files/hex_record_digits.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace tamrix::tests {
namespace {

using bytes_of_record = std::vector<std::uint8_t>;

std::string digits_of(const bytes_of_record& bytes)
{
    std::string text(2 * bytes.size(), '0');
    unsigned sum = 0;
    hex_digits::encode(bytes.data(), bytes.size(), text.data(), sum);
    return text + std::string(hex_digits::room_after_record, '\n');
}

struct decoded_record {
    bool good = false;
    std::uint64_t head = 0;
    unsigned sum = 0;
    bytes_of_record data;
};

template <std::size_t head_bytes>
decoded_record decode_record(const std::string& text, std::size_t length)
{
    decoded_record result;
    result.data.resize(length + hex_digits::room_after_data);
    result.good = hex_digits::decode_record<head_bytes>(reinterpret_cast<const std::uint8_t*>(text.data()), length,
                                                        result.data.data(), result.head, result.sum);
    result.data.resize(length);
    return result;
}

template <std::size_t head_bytes>
void expect_every_length_decodes()
{
    for (std::size_t length = 0; length <= 255; ++length) {
        const bytes_of_record record = random_bytes(head_bytes + length + 1, static_cast<unsigned>(length));
        unsigned sum = 0;
        for (const std::uint8_t byte : record) sum += byte;
        const decoded_record result = decode_record<head_bytes>(digits_of(record), length);
        ASSERT_TRUE(result.good) << length;
        ASSERT_EQ(result.sum, sum);
        ASSERT_TRUE(std::equal(result.data.begin(), result.data.end(), record.begin() + head_bytes)) << length;
        for (std::size_t i = 0; i < head_bytes; ++i) ASSERT_EQ(result.head >> 8 * i & 0xFF, record[i]);
    }
}

TEST(hex_record_digits, records_of_every_length_decode_with_their_sum)
{
    expect_every_length_decodes<3>();
    expect_every_length_decodes<4>();
    expect_every_length_decodes<5>();
}

TEST(hex_record_digits, every_character_at_every_place_is_a_digit_or_is_refused)
{
    for (const std::size_t length : {1, 3, 11, 16, 28}) {
        const std::string text = digits_of(random_bytes(4 + length + 1));
        for (std::size_t at = 0; at < 2 * (4 + length + 1); ++at) {
            for (int character = 0; character < 256; ++character) {
                std::string changed = text;
                changed[at] = static_cast<char>(character);
                ASSERT_EQ(decode_record<4>(changed, length).good, std::isxdigit(character) != 0)
                    << length << ' ' << at << ' ' << character;
            }
        }
    }
}

template <std::size_t head_bytes>
void expect_every_length_encodes()
{
    for (std::size_t length = 0; length <= 255; ++length) {
        const bytes_of_record record = random_bytes(head_bytes + length, static_cast<unsigned>(length));
        std::uint64_t head = 0;
        std::memcpy(&head, record.data(), head_bytes);
        const std::string expected = digits_of(record);
        for (const unsigned good_sum : {0u, 0xFFu}) {
            std::string text(2 * (record.size() + 1) + hex_digits::room_after_digits, '\0');
            const char* const end = hex_digits::encode_record<head_bytes>(head, std::span{record}.subspan(head_bytes),
                                                                          good_sum, text.data());
            ASSERT_EQ(end - text.data(), 2 * (record.size() + 1)) << length;
            ASSERT_TRUE(expected.starts_with(text.substr(0, 2 * record.size()))) << length;
            const decoded_record read = decode_record<head_bytes>(text, length);
            ASSERT_TRUE(read.good);
            ASSERT_EQ(read.sum & 0xFF, good_sum) << length;
        }
    }
}

TEST(hex_record_digits, records_of_every_length_encode_with_their_checksum)
{
    expect_every_length_encodes<3>();
    expect_every_length_encodes<4>();
    expect_every_length_encodes<5>();
}

}  // namespace
}  // namespace tamrix::tests
