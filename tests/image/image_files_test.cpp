#include "image/image_files.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix;

namespace {

class text_target final : public byte_target {
public:
    void write(std::span<const std::uint8_t> bytes) override { text.append(bytes.begin(), bytes.end()); }
    std::string text;
};

class image_files : public testing::Test {
protected:
    void put(std::uint64_t address, std::string_view text)
    {
        image.take(address, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    std::string written(std::string_view format, const image_form& form = {}) const
    {
        text_target target;
        image_writer_of(format)(image, form, target);
        return target.text;
    }
    std::string refusal(std::string_view format, const image_form& form = {}) const
    {
        text_target target;
        try {
            image_writer_of(format)(image, form, target);
        } catch (const image_error& error) {
            EXPECT_EQ(target.text, "") << "it is refused first";
            return error.what();
        }
        return "taken";
    }

    memory_image image;
};

}  // namespace

TEST_F(image_files, of_intel_hex_have_a_record_for_each_64_kib_that_holds_something)
{
    put(0xFFFE, "abcd");
    put(0xFFFF0000, "e");
    EXPECT_EQ(written("intel"), ":020000040000FA\r\n:02FFFE0061623E\r\n:020000040001F9\r\n:0200000063643"
                                "7\r\n:02000004FFFFFC\r\n:01000000659A\r\n:00000001FF\r\n");
}

TEST_F(image_files, have_records_of_the_length_that_is_asked_for)
{
    put(1, "abcdef");
    EXPECT_EQ(written("intel", {.record_bytes = 4}), ":020000040000FA\r\n:0400010061626364"
                                                     "71\r\n:020005006566"
                                                     "2E\r\n:00000001FF\r\n");
    EXPECT_EQ(written("motorola", {.record_bytes = 5}), "S30A000000016162636465"
                                                        "05\r\nS306000000066"
                                                        "68D\r\nS70500000000FA\r\n");
    EXPECT_EQ(written("tektronix", {.record_bytes = 255}), "/0001060761626364656639\r\n/00000000\r\n");
}

TEST_F(image_files, gather_a_record_from_pieces_of_the_image)
{
    std::string noise(70000, '\0');
    for (std::size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * 7 + i / 256);
    put(0xFFF0, noise);
    const std::string text = written("motorola", {.record_bytes = 250});
    std::string data;
    std::uint64_t address = 0xFFF0;
    for (std::size_t at = 0; text.compare(at, 2, "S3") == 0; at = text.find("\r\n", at) + 2) {
        EXPECT_EQ(std::stoull(text.substr(at + 4, 8), nullptr, 16), address);
        const std::size_t digits = text.find("\r\n", at) - at - 14;
        for (std::size_t i = 0; i < digits; i += 2)
            data += static_cast<char>(std::stoi(text.substr(at + 12 + i, 2), nullptr, 16));
        address += digits / 2;
    }
    EXPECT_TRUE(data == noise);
}

TEST_F(image_files, hold_the_start_address)
{
    put(0, "a");
    const image_form form{.start_address = 0x1234};
    EXPECT_EQ(written("intel", form), ":020000040000FA\r\n:01000000619E\r\n:0400000500001234B1\r\n:00000001FF\r\n");
    EXPECT_EQ(written("motorola", form), "S306000000006198\r\nS70500001234B4\r\n");
    EXPECT_EQ(written("tektronix", form), "/000001016107\r\n/1234000A\r\n");
    EXPECT_EQ(written("binary", form), "a");
}

TEST_F(image_files, of_a_format_whose_addresses_end_too_early_are_refused)
{
    put(0xFFFF, "a");
    EXPECT_EQ(refusal("tektronix"), "taken");
    EXPECT_EQ(refusal("tektronix", {.start_address = 0x10000}),
              "the start address 0x10000 is above 0xFFFF, the highest address of Tektronix");
    put(0x10000, "a");
    EXPECT_EQ(refusal("tektronix"), "the last byte, at 0x10000 is above 0xFFFF, the highest address of Tektronix");
    put(0xFFFFFFFF, "a");
    EXPECT_EQ(refusal("intel"), "taken");
    EXPECT_EQ(refusal("motorola"), "taken");
    put(0x100000000, "a");
    EXPECT_EQ(refusal("intel"), "the last byte, at 0x100000000 is above 0xFFFFFFFF, the highest address of Intel HEX");
    EXPECT_EQ(refusal("motorola"),
              "the last byte, at 0x100000000 is above 0xFFFFFFFF, the highest address of Motorola S");
}

TEST_F(image_files, of_nothing_have_their_end_alone)
{
    EXPECT_EQ(written("intel"), ":00000001FF\r\n");
    EXPECT_EQ(written("motorola"), "S70500000000FA\r\n");
    EXPECT_EQ(written("binary"), "");
}

TEST_F(image_files, are_written_in_the_formats_that_can_be_saved)
{
    EXPECT_EQ(image_writer_of("texas"), nullptr);
    EXPECT_EQ(most_record_bytes("texas"), 0u);
    EXPECT_EQ(most_record_bytes("binary"), 0u);
    EXPECT_EQ(most_record_bytes("intel"), 255u);
    EXPECT_EQ(most_record_bytes("motorola"), 250u);
    EXPECT_EQ(most_record_bytes("tektronix"), 255u);
}
