// Which format a file has, by its content; and which addresses it fills.
#include "formats/formats.h"
#include "load_fixture.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

struct detect_fixture : testing::Test {
    detected_format detect(std::string_view content, std::string_view name = "file")
    {
        return detect_format(files.write(name, content));
    }
    void expect(std::string_view content, int index, detection certainty, std::string_view name = "file")
    {
        const detected_format found = detect(content, name);
        EXPECT_EQ(found.index, index) << content;
        EXPECT_EQ(found.certainty, certainty) << content;
    }
    /// Whole files of a text format, a damaged one, and one that only begins like it.
    void expect_text_format(int index, std::initializer_list<std::string_view> whole, std::string_view damaged,
                            std::string_view other)
    {
        for (const std::string_view content : whole) expect(content, index, detection::mine);
        expect(damaged, index, detection::damaged);
        expect(other, 0, detection::maybe);
    }
    std::optional<address_range> measure(int index, std::string_view content)
    {
        return formats()[static_cast<std::size_t>(index)].measure(files.write("file", content));
    }
    void expect_range(int index, std::string_view content, std::int64_t begin, std::int64_t end)
    {
        const auto range = measure(index, content);
        ASSERT_TRUE(range);
        EXPECT_EQ(range->begin, begin);
        EXPECT_EQ(range->end, end);
    }

    temp_folder files;
};

using detect_format_of = detect_fixture;

TEST_F(detect_format_of, intel_records)
{
    expect(":020000000102FB\r\n:00000001FF\r\n", 1, detection::mine);
    expect(":020000040001F9\n:0100000007F8\n", 1, detection::mine);
    expect(":00000001FF\n", 1, detection::mine);
}

TEST_F(detect_format_of, intel_records_behind_text)
{
    expect("; made by: somebody\r\n:020000040001F9\r\n:020000000102FB\r\n", 1, detection::mine);
}

TEST_F(detect_format_of, an_intel_record_with_a_bad_checksum)
{
    expect(":0100000007F9\n", 1, detection::damaged);
    // On a line of its own, whatever ends the line before it; in running text it is no record.
    expect("; made by: somebody\n:0100000007F9\n", 1, detection::damaged);
    expect("; made by: somebody\r:0100000007F9\r", 1, detection::damaged);
    expect("; made by :0100000007F9\n", 0, detection::maybe);
}

TEST_F(detect_format_of, intel_hex16_records)
{
    expect(":0100000012348"
           "9"
           "\n",
           1, detection::damaged);  // neither sum fits
    expect(":010000001234B9\r\n:00000001FF\r\n", 6, detection::mine);
    expect(":020000040001F9\r\n:0200100012345678DA\r\n", 6, detection::mine);
}

TEST_F(detect_format_of, motorola_records)
{
    expect_text_format(2, {"S00600004844521B\r\nS1060000AABBCCC8\r\nS9030000FC\r\n", "S30600000000AA4F\n"},
                       "S1060000AABBCC00\n", "Some text is no record\n");
    expect("S00600004844521B\r\nS1060000AABBCC00\r\n", 2, detection::mine);  // the first record decides
}

TEST_F(detect_format_of, tektronix_records)
{
    expect_text_format(3, {"/0012020511226\n/0000000000r\n"}, "/0012020911226\n", "/usr/bin/env\n");
    expect("/0FFF022F11226\n/0000000000r\n", 3, detection::mine);
}

TEST_F(detect_format_of, texas_instrument_text)
{
    expect_text_format(7, {"@F000\n31 40 00\nq\n", "@F000\r\nq\r\n"}, "@F000\nhello\n", "@hello\n");
    // One byte alone on its line, whatever ends it.
    for (const char* end : {"", "\n", "\r", "\r\n"}) expect(std::string{"@F000\n31"} + end, 7, detection::mine);
    expect("@F000\n31x\n", 7, detection::damaged);
}

TEST_F(detect_format_of, holtek_images)
{
    const std::string whole{"\xC0\x01\x00?e\x06\x00\x00\x00\x00\x00\x11\xE9", 13};
    expect(whole, 4, detection::mine);
    std::string damaged = whole;
    damaged.back() = 0;
    expect(damaged, 4, detection::damaged);
    expect(std::string{"\xC0\x01\x00?x\x06\x00\x00\x00\x00\x00\x11\xE9", 13}, 0, detection::maybe);
}

TEST_F(detect_format_of, emc_images_need_their_extension)
{
    const std::string image{"\x02\x00\x11\x22\x33\x44", 6};
    expect(image, 5, detection::maybe, "image.CDS");
    expect(image, 0, detection::maybe, "image.bin");
    expect(image, 0, detection::maybe, "image");
    expect(image + "x", 0, detection::maybe, "image.cds");
    // An erased image of 128 KiB begins with a word count that fits its length.
    expect(std::string(0x20000, '\xFF'), 0, detection::maybe, "erased.bin");
}

TEST_F(detect_format_of, anything_else_is_perhaps_binary)
{
    expect("", 0, detection::maybe);
    expect("plain text: no records", 0, detection::maybe);
    expect(std::string(5000, '\0'), 0, detection::maybe);
    const bytes_of noise = random_bytes(65536);
    expect({reinterpret_cast<const char*>(noise.data()), noise.size()}, 0, detection::maybe);
}

TEST_F(detect_format_of, two_formats_in_one_file_is_the_surer_one)
{
    // A damaged S-record in front of good Intel records, and the other way round.
    expect("S1060000AABBCC00\n:0100000007F8\n", 1, detection::mine);
    expect(":0100000007F9\nS1060000AABBCCC8\n", 2, detection::mine);
    // Both good: the lower index.
    expect("S1060000AABBCCC8\n:0100000007F8\n", 1, detection::mine);
    // Both good: the name decides.
    expect("S1060000AABBCCC8\n:0100000007F8\n", 2, detection::mine, "firmware.s19");
}

using measured_range_of = detect_fixture;

TEST_F(measured_range_of, a_binary_file_is_its_length)
{
    expect_range(0, "abc", 0, 3);
    expect_range(0, "", 0, 0);
}

TEST_F(measured_range_of, intel_files_counts_extended_addresses)
{
    expect_range(1,
                 ":020000040800F2\n:020010000102EB\n:011FF00003ED\n:00000001FF\n:01400000099"
                 "6\n",
                 0x08000010, 0x08001FF1);
    EXPECT_FALSE(measure(1, "nothing"));
    EXPECT_FALSE(measure(1, ":00000006FA\n:0100100045AA\n")) << "nothing is read after an unknown record";
}

TEST_F(measured_range_of, hex16_files_counts_bytes) { expect_range(6, ":0200100012345678DA\n", 0x20, 0x24); }

TEST_F(measured_range_of, motorola_files_goes_over_all_widths)
{
    expect_range(2,
                 "S00600004844521B\nS1050010AABB85\nS2050100000A"
                 "EF\nS30602000000CC2B\nS9030000FC\n",
                 0x10, 0x02000001);
    EXPECT_FALSE(measure(2, "S9030000FC\n"));
    EXPECT_FALSE(measure(2, "S"));
}

TEST_F(measured_range_of, tektronix_files) { expect_range(3, "/0012020511226\n/0000000000r\n", 0x12, 0x14); }

TEST_F(measured_range_of, texas_instrument_text_goes_on_line_by_line)
{
    expect_range(7, "@0010\n01 02\n03\n@0008\n04\nq\n", 0x08, 0x13);
    EXPECT_FALSE(measure(7, "q\n"));
}

TEST_F(measured_range_of, vendor_images)
{
    expect_range(5, std::string_view{"\x02\x00\x11\x22\x33\x44", 6}, 0, 4);
    EXPECT_FALSE(measure(4, "\xC0"));
}

}  // namespace
}  // namespace tamrix::tests
