// The binary images of two vendors, Holtek and EMC.
#include "load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

bytes_of segment(std::uint32_t address, const bytes_of& data)
{
    const auto length = static_cast<unsigned>(data.size()) + 5;
    bytes_of all{'e', static_cast<std::uint8_t>(length), static_cast<std::uint8_t>(length >> 8)};
    for (int shift = 0; shift < 32; shift += 8) all.push_back(static_cast<std::uint8_t>(address >> shift));
    all.insert(all.end(), data.begin(), data.end());
    unsigned sum = 0;
    for (std::size_t i = 1; i < all.size(); ++i) sum += all[i];
    all.push_back(static_cast<std::uint8_t>(0x100 - (sum & 0xFF)));
    return all;
}

bytes_of image(const bytes_of& header, const bytes_of& first, const bytes_of& second)
{
    bytes_of all{0xC0, static_cast<std::uint8_t>(header.size()), static_cast<std::uint8_t>(header.size() >> 8)};
    for (const auto* part : {&header, &first, &second}) all.insert(all.end(), part->begin(), part->end());
    return all;
}

struct holtek_fixture : format_fixture {
    holtek_fixture() : format_fixture{4, {.buflength = 0x2000, .tlength = 0x480, .wordmode = 2}} {}
};

TEST(read_holtek, the_first_segment_goes_to_its_address_and_the_second_behind_the_words)
{
    holtek_fixture f;
    EXPECT_EQ(f.read(image({1, 2, 3}, segment(0x10, {0xAA, 0xBB}), segment(0x7777, {0xCC}))), status::done);
    EXPECT_EQ(f.bytes(0x0F, 4), (bytes_of{untouched, 0xAA, 0xBB, untouched}));
    EXPECT_EQ(f.buffer(0x900), 0xCC);
    EXPECT_EQ(f.why(), "");
}

TEST(read_holtek, the_second_segment_starts_on_a_multiple_of_256)
{
    holtek_fixture f;
    f.session.blocks.tlength(0) = 0x4C1;  // 0x982 bytes
    EXPECT_EQ(f.read(image({}, segment(0, {1}), segment(0, {2}))), status::done);
    EXPECT_EQ(f.buffer(0x900), 2);
}

TEST(read_holtek, the_second_segment_goes_after_words_of_two_bytes_whatever_the_device_has)
{
    holtek_fixture f;
    f.session.blocks.wordmode(0) = 1;
    EXPECT_EQ(f.read(image({}, segment(0, {1}), segment(0, {2}))), status::done);
    EXPECT_EQ(f.buffer(0x900), 2);
    EXPECT_EQ(f.buffer(0x400), untouched);
}

TEST(read_holtek, the_typed_start_address_has_no_effect)
{
    holtek_fixture f;
    EXPECT_EQ(f.read(image({}, segment(0x10, {1}), segment(0, {2})), {.to_buffer = "500"}), status::done);
    EXPECT_EQ(f.buffer(0x10), 1);
    EXPECT_EQ(f.buffer(0x510), untouched);
}

TEST(read_holtek, a_bad_second_segment_fails_with_the_first_one_loaded)
{
    holtek_fixture f;
    bytes_of second = segment(0, {2, 3});
    second.back() ^= 1;
    EXPECT_EQ(f.read(image({}, segment(0x10, {1}), second)), status::failed);
    EXPECT_EQ(f.buffer(0x10), 1);
    EXPECT_EQ(f.why(), "file: offset 15: a wrong checksum where a segment whose bytes add up to 0 was expected");
    second[0] = 'f';
    EXPECT_EQ(f.failure(image({}, segment(0x10, {1}), second)),
              "file: offset C: no segment where a segment that begins with \"e\" was expected");
}

TEST(read_holtek, a_missing_second_segment_fails)
{
    holtek_fixture f;
    EXPECT_EQ(f.failure(image({}, segment(0x10, {1}), {})),
              "file: offset C: the end of the file where a segment that begins with \"e\" was expected");
}

TEST(read_holtek, a_wrong_mark_or_a_header_of_8000_bytes_fails)
{
    holtek_fixture f;
    bytes_of wrong = image({}, segment(0, {1}), segment(0, {2}));
    wrong[0] = 0xC1;
    EXPECT_EQ(f.read(wrong), status::failed);
    EXPECT_EQ(f.why(),
              "file: offset 0: no Holtek header where the mark C0 with a header length below 8000 was expected");
    EXPECT_EQ(f.read(image(bytes_of(0x8000), segment(0, {1}), segment(0, {2}))), status::failed);
    EXPECT_EQ(f.read(image(bytes_of(0x7FFF), segment(0, {1}), segment(0, {2}))), status::done);
    EXPECT_EQ(f.read(""), status::failed);
    EXPECT_TRUE(f.shell.boxes().empty());
}

TEST(read_holtek, a_segment_behind_the_buffer_fails)
{
    holtek_fixture f;
    EXPECT_EQ(f.failure(image({}, segment(0xFFFFFFFF, {1}), segment(0, {2}))),
              "file: subscript out of range: ibuffer(4294967295)");
    EXPECT_EQ(f.failure(image({}, segment(0x01000000, {1}), segment(0, {2}))),
              "file: subscript out of range: ibuffer(16777216)");
}

struct emc_fixture : format_fixture {
    emc_fixture() : format_fixture{5} {}
};

TEST(read_emc, the_words_fill_the_buffer_from_its_start)
{
    emc_fixture f;
    EXPECT_EQ(f.read(bytes_of{2, 0, 0x11, 0x22, 0x33, 0x44, 0x55}, {.to_buffer = "100"}), status::done);
    EXPECT_EQ(f.bytes(0, 5), (bytes_of{0x11, 0x22, 0x33, 0x44, untouched}));
    EXPECT_EQ(f.shell.progress().back(), 100);
}

TEST(read_emc, a_word_count_above_the_file_fails_with_the_bytes_before_it_loaded)
{
    emc_fixture f;
    EXPECT_EQ(f.read(bytes_of{3, 0, 0x11, 0x22, 0x33}), status::failed);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{0x11, 0x22, 0x33, untouched}));
    EXPECT_EQ(f.why(), "file: offset 5: the end of the file where a data block of 6 bytes was expected");
}

TEST(read_emc, a_file_without_a_word_count_fails)
{
    emc_fixture f;
    EXPECT_EQ(f.read(""), status::failed);
    EXPECT_EQ(f.failure("x"), "file: offset 1: the end of the file where a word count was expected");
}

TEST(read_emc, an_image_larger_than_the_buffer_fails_where_the_buffer_ends)
{
    emc_fixture f;
    bytes_of image(2 + 0x4000, 0x77);
    image[0] = 0x00;
    image[1] = 0x20;
    EXPECT_EQ(f.read(image), status::failed);
    EXPECT_EQ(f.buffer(0x1000 + 2199), 0x77);
    EXPECT_EQ(f.why(), "file: subscript out of range: ibuffer(6296)");
}

TEST(read_emc, progress_stands_on_tenths_of_the_file)
{
    emc_fixture f;
    bytes_of image(1002);
    image[0] = 0xF4;
    image[1] = 0x01;
    EXPECT_EQ(f.read(image), status::done);
    ASSERT_EQ(f.shell.progress().size(), 10u);  // the first, 0, is what the bar shows already
    EXPECT_DOUBLE_EQ(f.shell.progress().front(), 100.0 * 100 / 1001);
}

}  // namespace
}  // namespace tamrix::tests
