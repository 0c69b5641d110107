#include "verify/verify_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

struct format_case {
    const char* rule;
    const char* format;
    std::string content;
    std::string remarks;
    std::string segments;
};

std::string tek(unsigned address, std::size_t count = 4) { return tektronix_record(address, counted(count)) + "\n"; }

std::string bytes_text(std::initializer_list<int> bytes) { return {bytes.begin(), bytes.end()}; }

const std::string tek_end = "/00000000\n", holtek_head = bytes_text({0xC0, 2, 0, 'h', 'i'}),
                  holtek_first = bytes_text({'e', 8, 0, 0x10, 0, 0, 0, 1, 2, 3, 0xE2}),
                  holtek_second = bytes_text({'e', 6, 0, 0, 0, 0, 0, 4, 0xF6});

const format_case format_cases[] = {
    {"binary", "binary", "abc", "", "0+3"},
    {"binary_empty", "binary", "", "f: no data\n", ""},

    {"tektronix", "tektronix", tek(0x100) + tek(0x104, 40) + tek_end, "", "100+2C"},
    {"tektronix_own_end", "tektronix", tek(0) + "/0000000000r\r\n", "", "0+4"},
    {"tektronix_blank_lines", "tektronix", "\n" + tek(0) + " \n" + tek_end + "\n\x1Az", "", "0+4"},
    {"tektronix_start", "tektronix", tek(0) + tek(0x123, 0), "", "0+4"},
    {"tektronix_header_checksum", "tektronix", "/010004060001020306\n" + tek(0) + tek_end,
     "f:1: header checksum 06 where 05 was expected\n", "0+4 100+4"},
    {"tektronix_address_checksum_alone", "tektronix", "/010004010001020306\n" + tek_end,
     "f:1: header checksum 01 where 05 was expected\n", "100+4"},
    {"tektronix_checksum", "tektronix", "/010004050001020307\n" + tek(0) + tek_end,
     "f:1: checksum 07 where 06 was expected\n", "0+4 100+4"},
    {"tektronix_checksum_of_the_end", "tektronix", tek(0) + "/01000002\n",
     "f:2: header checksum 02 where 01 was expected\n", "0+4"},
    {"tektronix_short", "tektronix", "/0100040500010206\n" + tek(0) + tek_end,
     "f:1: a line of 17 characters where 19 was expected\n", "0+4"},
    {"tektronix_no_digit", "tektronix", "/010004050001_20306\n" + tek(0) + tek_end,
     "f:1: '_' in column 14 where a hexadecimal digit was expected\n", "0+4"},
    {"tektronix_characters_after_it", "tektronix", "/010004050001020306 \n" + tek_end,
     "f:1: ' ' in column 20 where the end of the line was expected\n", "100+4"},
    {"tektronix_characters_after_the_end", "tektronix", tek(0) + "/0000000001r\n",
     "f:2: '0' in column 10 where the end of the line was expected\n", "0+4"},
    {"tektronix_other_line", "tektronix", "text\n" + tek(0) + tek_end, "f:1: 't' in column 1 where '/' was expected\n",
     "0+4"},
    {"tektronix_abort", "tektronix", "//power failed\n" + tek(0) + tek_end,
     "f:1: a record of an aborted transfer where data was expected\n", "0+4"},
    {"tektronix_no_end", "tektronix", tek(0), "f:2: the end of the file where the end record /00000000 was expected\n",
     "0+4"},
    {"tektronix_after_the_end", "tektronix", tek(0) + tek_end + tek(4),
     "f:3: a line after the end record where the end of the file was expected\n", "0+4"},
    {"tektronix_overlap", "tektronix", tek(0) + tek(2) + tek_end,
     "f:2: data for 0002 to 0003, which has data of an earlier record\n", "0+6"},
    {"tektronix_past_64_k", "tektronix", tek(0xFFFE) + tek_end,
     "f:1: data up to 00010001 where at most FFFF was expected\n", "0+2 FFFE+2"},
    {"tektronix_no_data", "tektronix", tek_end, "f: no data\n", ""},

    {"texas", "texas", "@0100\n00 01 02 03\n04\n@0200\n05 06 \nq\n", "", "100+5 200+2"},
    {"texas_more_digits", "texas", "@10000\n00 01\nq\n", "", "10000+2"},
    {"texas_blank_lines", "texas", "\n@0100\n\n00\r\n01\r\n q\nq",
     "f:6: ' ' in column 1 where a hexadecimal digit was expected\n", "100+2"},
    {"texas_no_digit", "texas", "@0100\n00 0x 02\n03\nq\n",
     "f:2: 'x' in column 5 where a hexadecimal digit was expected\n", "100+1 103+1"},
    {"texas_half_a_byte", "texas", "@0100\n00 0\n02\nq\n", "f:2: half a byte where a hexadecimal digit was expected\n",
     "100+1 102+1"},
    {"texas_separator", "texas", "@0100\n00,01\nq\n",
     "f:2: ',' in column 3 where ' ' was expected\n"
     "f: no data\n",
     ""},
    {"texas_two_blanks", "texas", "@0100\n00  01\nq\n", "f:2: ' ' in column 4 where a hexadecimal digit was expected\n",
     "100+1"},
    {"texas_data_without_address", "texas", "00\n01\n@0000\n02\nq\n",
     "f:1: data where an address ahead of them was expected\n", "0+1"},
    {"texas_address", "texas", "@01G0\n00\n@0000\n02\nq\n",
     "f:1: 'G' in column 4 where a hexadecimal digit was expected\n", "0+1"},
    {"texas_address_too_short", "texas", "@010\n00\n@0000\n02\nq\n",
     "f:1: an address of 3 digits where 4 to 8 was expected\n", "0+1"},
    {"texas_no_end", "texas", "@0100\n00\n", "f:3: the end of the file where a line with \"q\" was expected\n",
     "100+1"},
    {"texas_characters_after_the_end", "texas", "@0100\n00\nq x\n",
     "f:3: ' ' in column 2 where the end of the line was expected\n", "100+1"},
    {"texas_after_the_end", "texas", "@0100\n00\nq\n@0200\n",
     "f:4: a line after the end record where the end of the file was expected\n", "100+1"},
    {"texas_overlap", "texas", "@0100\n00 01 02\n@0101\n00 01\nq\n",
     "f:4: data for 0101 to 0102, which has data of an earlier record\n", "100+3"},
    {"texas_past_4_g", "texas", "@FFFFFFFE\n00 01 02\nq\n",
     "f:2: data up to 100000000 where at most FFFFFFFF was expected\n", "0+1 FFFFFFFE+2"},
    {"texas_no_data", "texas", "@0100\nq\n", "f: no data\n", ""},

    {"emc", "emc", bytes_text({2, 0, 1, 2, 3, 4}), "", "0+4"},
    {"emc_short", "emc", bytes_text({2, 0, 1, 2, 3}),
     "f: offset 5: the end of the file where data up to 6 was expected\n", "0+3"},
    {"emc_long", "emc", bytes_text({2, 0, 1, 2, 3, 4, 5}),
     "f: offset 6: more bytes where the end of the file was expected\n", "0+4"},
    {"emc_no_count", "emc", bytes_text({2}),
     "f: offset 1: the end of the file where a word count of two bytes was expected\nf: no data\n", ""},
    {"emc_no_data", "emc", bytes_text({0, 0}), "f: no data\n", ""},

    {"holtek", "holtek", holtek_head + holtek_first + holtek_second, "", "10+3 100+1"},
    {"holtek_long_segment", "holtek",
     holtek_head + bytes_text({'e', 5, 1, 0, 0, 0, 0}) + std::string(256, '\1') + bytes_text({0xFA}) + holtek_second,
     "", "0+101"},
    {"holtek_mark", "holtek", "\xC1" + (holtek_head + holtek_first + holtek_second).substr(1),
     "f: offset 0: mark C1 where C0 was expected\n", "10+3 100+1"},
    {"holtek_header_length", "holtek", bytes_text({0xC0, 0, 0x80}),
     "f: offset 1: header length 8000 where less than 8000 was expected\nf: no data\n", ""},
    {"holtek_short_header", "holtek", bytes_text({0xC0, 9, 0, 1}),
     "f: offset 4: the end of the file where the rest of the header was expected\nf: no data\n", ""},
    {"holtek_no_segment", "holtek", holtek_head + "f",
     "f: offset 6: the end of the file where a segment was expected\nf: no data\n", ""},
    {"holtek_segment_mark", "holtek", holtek_head + "f" + holtek_first.substr(1) + holtek_second,
     "f: offset 5: mark 66 where 65, a segment was expected\nf: no data\n", ""},
    {"holtek_segment_length", "holtek", holtek_head + bytes_text({'e', 4, 0, 0, 0, 0, 0xFC}),
     "f: offset 6: segment length 0004 where 0005 or more was expected\nf: no data\n", ""},
    {"holtek_checksum", "holtek", holtek_head + holtek_first.substr(0, 10) + "\xE3" + holtek_second,
     "f: offset F: checksum E3 where E2 was expected\n", "10+3 100+1"},
    {"holtek_short_segment", "holtek", holtek_head + holtek_first + holtek_second.substr(0, 7),
     "f: offset 17: the end of the file where the rest of a segment of 0006 bytes was expected\n", "10+3"},
    {"holtek_no_second_segment", "holtek", holtek_head + holtek_first,
     "f: offset 10: the end of the file where a second segment was expected\n", "10+3"},
    {"holtek_long", "holtek", holtek_head + holtek_first + holtek_second + "x",
     "f: offset 19: more bytes where the end of the file was expected\n", "10+3 100+1"},
};

class format_rules : public testing::TestWithParam<format_case> {};

TEST_P(format_rules, are_checked)
{
    const reading read = verify(GetParam().format, GetParam().content);
    EXPECT_EQ(read.remarks(), GetParam().remarks);
    EXPECT_EQ(read.segments(), GetParam().segments);
}

INSTANTIATE_TEST_SUITE_P(all, format_rules, testing::ValuesIn(format_cases),
                         [](const auto& info) { return std::string{info.param.rule}; });

TEST(tektronix_verifier, yields_the_transfer_address)
{
    EXPECT_EQ(verify("tektronix", tek(0) + tek(0x123, 0)).found.start_address, 0x123u);
    EXPECT_EQ(verify("tektronix", tek(0) + tek_end).found.start_address, std::nullopt);
}

TEST(texas_verifier, reads_a_line_of_any_length)
{
    std::string content = "@0000\n";
    for (int i = 0; i < 200'000; ++i) content += "5A ";
    const reading read = verify("texas", content + "\nq\n");
    EXPECT_EQ(read.remarks(), "");
    EXPECT_EQ(read.segments(), "0+30D40");
    EXPECT_EQ(read.bytes.at(199'999), 0x5A);
}

TEST(binary_verifier, keeps_every_byte)
{
    const std::string content(300'001, 'q');
    const reading read = verify("binary", content);
    EXPECT_EQ(read.bytes.size(), content.size());
    EXPECT_EQ(read.found.record_bytes, content.size());
    EXPECT_EQ(read.segments(), "0+493E1");
}

}  // namespace
}  // namespace tamrix::tests
