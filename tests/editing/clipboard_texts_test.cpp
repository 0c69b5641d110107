#include "editing/clipboard_texts.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix::editing;

namespace {

std::vector<std::uint8_t> counting(std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<std::uint8_t>(i);
    return bytes;
}

std::vector<std::uint8_t> pasted(std::string_view text)
{
    const pasted_bytes result = bytes_of_text(text, column::hexadecimal);
    EXPECT_EQ(result.trouble, "") << text;
    return result.bytes;
}

std::string trouble(std::string_view text)
{
    const pasted_bytes result = bytes_of_text(text, column::hexadecimal);
    EXPECT_TRUE(result.bytes.empty()) << text;
    return result.trouble;
}

}  // namespace

TEST(a_copy, in_hexadecimal_has_16_bytes_a_line)
{
    EXPECT_EQ(hexadecimal_text(counting(18)), "00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F\n10 11");
    EXPECT_EQ(hexadecimal_text(counting(16)), "00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F");
    EXPECT_EQ(hexadecimal_text({}), "");
}

TEST(a_copy, in_characters_is_what_the_view_shows)
{
    EXPECT_EQ(characters_text(std::vector<std::uint8_t>{0, 0x1F, 0x20, 'A', 0x7E, 0x7F, 0xFF}), ".. A~..");
}

TEST(a_copy, as_a_c_array_compiles)
{
    EXPECT_EQ(c_array_text(counting(13)),
              "const unsigned char bytes[13] = {\n"
              "    0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x0A, 0x0B,\n    0x0C\n};\n");
}

TEST(a_copy, as_intel_hex_has_the_addresses_of_the_buffer)
{
    EXPECT_EQ(
        intel_hex_text(counting(17), 0x1FFF8),
        ":020000040001F9\n:08FFF8000001020304050607E5\n:020000040002F8\n:0900000008090A0B0C0D0E0F108B\n:00000001FF\n");
}

TEST(a_paste, gives_back_what_was_copied)
{
    std::mt19937 random{3};
    for (int round = 0; round < 300; ++round) {
        std::vector<std::uint8_t> bytes(1 + random() % 100);
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
        EXPECT_EQ(pasted(hexadecimal_text(bytes)), bytes);
        EXPECT_EQ(pasted(c_array_text(bytes)), bytes);
        EXPECT_EQ(pasted(intel_hex_text(bytes, random() % 0x100000)), bytes);
    }
}

TEST(a_paste, takes_bytes_as_people_write_them)
{
    const std::vector<std::uint8_t> three{0x55, 0xAA, 0x0F};
    for (const char* text : {"55 AA 0F", "55aa0f", "55AA 0F\n", " 0x55, 0xAA, 0x0f ", "0X55;0XAA;0X0F;",
                             "55,\tAA,\r\n0F", "uint8_t rom[] = { 0x55, 0xAA,\n 0x0F, };\n"}) {
        EXPECT_EQ(pasted(text), three) << text;
    }
}

TEST(a_paste, into_the_characters_is_the_text_itself)
{
    const pasted_bytes result = bytes_of_text("55 \xC3\xA4", column::characters);
    EXPECT_EQ(result.bytes, (std::vector<std::uint8_t>{'5', '5', ' ', 0xC3, 0xA4}));
    EXPECT_EQ(result.trouble, "");
}

TEST(a_paste, says_what_is_no_byte)
{
    EXPECT_EQ(trouble("55 zz 00"), "\"zz\" is no byte in hexadecimal.");
    EXPECT_EQ(trouble("55 A"), "\"A\" is no byte in hexadecimal.");
    EXPECT_EQ(trouble("0x"), "\"\" is no byte in hexadecimal.");
    EXPECT_EQ(trouble("a very long word without any blank"), "\"a\" is no byte in hexadecimal.");
    EXPECT_EQ(trouble("zzzzzzzzzzzzzzzzzzzz"), "\"zzzzzzzzzzzz\" is no byte in hexadecimal.");
}

TEST(a_paste, of_nothing_says_so)
{
    EXPECT_EQ(trouble(""), "There is no text on the clipboard.");
    EXPECT_EQ(trouble(" \n"), "There are no bytes on the clipboard.");
    EXPECT_EQ(trouble("{}"), "There are no bytes on the clipboard.");
    EXPECT_EQ(bytes_of_text("", column::characters).trouble, "There is no text on the clipboard.");
}

TEST(a_paste, of_damaged_records_says_where)
{
    EXPECT_EQ(trouble(":0100000055AB\n:00000001FF\n"), "the clipboard:1: checksum AB where AA was expected");
}

TEST(a_paste, of_records_with_a_gap_is_refused)
{
    EXPECT_EQ(trouble(":0100000055AA\n:0100020055A8\n:00000001FF\n"),
              "The records have gaps; save them as a file and load that.");
}
