#include "verify/verify_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

struct motorola_case {
    const char* rule;
    std::string content;
    std::string remarks;
    std::string segments;
};

std::string s(unsigned type, std::uint32_t address, std::size_t count = 0)
{
    return motorola_record(type, address, counted(count)) + "\n";
}

const motorola_case motorola_cases[] = {
    {"s1", s(1, 0x10, 4) + s(9, 0), "", "10+4"},
    {"s2", s(2, 0x123456, 4) + s(8, 0), "", "123456+4"},
    {"s3", s(3, 0x80000000, 4) + s(7, 0), "", "80000000+4"},
    {"growing_addresses", s(1, 0xFFFC, 4) + s(2, 0x10000, 4) + s(3, 0x1000000, 4) + s(7, 0), "", "FFFC+8 1000000+4"},
    {"blank_lines_and_line_ends", "\n" + s(1, 0, 4) + " \t\r\n\r" + s(9, 0) + "\r\n\x1Ax", "", "0+4"},
    {"lower_case",
     "s1070000000102037E\nS107000"
     "0000102"
     "03f2\n" +
         s(9, 0),
     "f:1: 's' in column 1 where 'S' was expected\n", "0+4"},
    {"checksum",
     "S10700000001020"
     "3F3\n" +
         s(1, 4, 4) + s(9, 0),
     "f:1: checksum F3 where F2 was expected\n", "0+8"},
    {"checksum_of_the_header", "S00600004844521C\n" + s(1, 0, 4) + s(9, 0), "f:1: checksum 1C where 1B was expected\n",
     "0+4"},
    {"checksum_of_the_end", s(1, 0, 4) + "S9030000FD\n", "f:2: checksum FD where FC was expected\n", "0+4"},
    {"no_digit", "S1070000X0010203F2\n" + s(1, 4, 4) + s(9, 0),
     "f:1: 'X' in column 9 where a hexadecimal digit was expected\n", "4+4"},
    {"short",
     "S107000000010"
     "2\n" +
         s(1, 4, 4) + s(9, 0),
     "f:1: a line of 14 characters where 18 was expected\n", "4+4"},
    {"long", "S106000000010203F2\n" + s(1, 4, 4) + s(9, 0), "f:1: a line of 18 characters where 16 was expected\n",
     "0+3 4+4"},
    {"characters_after_it", "S107000000010203F2 x\n" + s(9, 0),
     "f:1: ' ' in column 19 where the end of the line was expected\n", "0+4"},
    {"comment", "* text\n" + s(1, 0, 4) + s(9, 0), "f:1: '*' in column 1 where 'S' was expected\n", "0+4"},
    {"reserved_type", "S4030000FC\n" + s(1, 0, 4) + s(9, 0),
     "f:1: record type S4 where S0 to S3 or S5 to S9 was expected\n", "0+4"},
    {"count_of_0", "S100\n" + s(1, 0, 4) + s(9, 0), "f:1: count 00 where 03 or more was expected\n", "0+4"},
    {"count_too_small", "S10200FD\n" + s(1, 0, 4) + s(9, 0), "f:1: count 02 where 03 or more was expected\n", "0+4"},
    {"empty_record", s(1, 0, 4) + s(1, 4) + s(9, 0), "", "0+4"},
    {"count_of_records", s(1, 0, 4) + s(1, 4, 4) + s(5, 2) + s(9, 0), "", "0+8"},
    {"long_count_of_records", s(1, 0, 4) + s(1, 4, 4) + s(6, 2) + s(9, 0), "", "0+8"},
    {"count_of_records_is_an_end", s(1, 0, 4) + s(5, 1), "", "0+4"},
    {"wrong_count_of_records", s(1, 0, 4) + s(5, 2) + s(9, 0), "f:2: a count of 2 records where 1 was expected\n",
     "0+4"},
    {"data_after_the_count", s(1, 0, 4) + s(5, 1) + s(1, 4, 4) + s(9, 0),
     "f:3: data after the count of records where an end record was expected\n", "0+8"},
    {"length_of_a_count", s(1, 0, 4) + s(5, 1, 1) + s(9, 0), "f:2: count 04 where 03 was expected\n", "0+4"},
    {"length_of_the_end", s(1, 0, 4) + s(9, 1, 1), "f:2: count 04 where 03 was expected\n", "0+4"},
    {"no_end", s(1, 0, 4), "f:2: the end of the file where an end record, S7, S8 or S9 was expected\n", "0+4"},
    {"another_end", s(3, 0, 4) + s(9, 0), "f:2: record type S9 where S7 was expected\n", "0+4"},
    {"after_the_end", s(1, 0, 4) + s(9, 0) + s(1, 4, 4),
     "f:3: a line after the end record where the end of the file was expected\n", "0+4"},
    {"shorter_address_again", s(2, 0, 4) + s(1, 4, 4) + s(8, 0), "f:2: record type S1 where S2 was expected\n", "0+8"},
    {"second_header", s(0, 0, 3) + s(0, 0, 3) + s(1, 0, 4) + s(9, 0),
     "f:2: a header record where one header at most was expected\n", "0+4"},
    {"header_after_data", s(1, 0, 4) + s(0, 0, 3) + s(9, 0),
     "f:2: a header record where a header ahead of the data was expected\n", "0+4"},
    {"overlap", s(1, 0, 4) + s(1, 3, 4) + s(9, 0), "f:2: data for 0003 to 0003, which has data of an earlier record\n",
     "0+7"},
    {"past_64_k", s(1, 0xFFFE, 4) + s(9, 0), "", "FFFE+4"},
    {"past_64_k_after_other_data", s(1, 0xFFFA, 4) + s(1, 0xFFFE, 4) + s(9, 0), "", "FFFA+8"},
    {"past_16_m", s(2, 0xFFFFFE, 4) + s(8, 0), "", "FFFFFE+4"},
    {"past_4_g", s(3, 0xFFFFFFFE, 4) + s(7, 0), "f:1: data up to 100000001 where at most FFFFFFFF was expected\n",
     "0+2 FFFFFFFE+2"},
    {"no_data", s(0, 0, 3) + s(9, 0), "f: no data\n", ""},
    {"empty", "", "f:1: the end of the file where an end record, S7, S8 or S9 was expected\nf: no data\n", ""},
};

class motorola_rules : public testing::TestWithParam<motorola_case> {};

TEST_P(motorola_rules, are_checked)
{
    const reading read = verify("motorola", GetParam().content);
    EXPECT_EQ(read.remarks(), GetParam().remarks);
    EXPECT_EQ(read.segments(), GetParam().segments);
    const reading quick = verify("motorola", GetParam().content + blank_lines());
    EXPECT_EQ(quick.segments(), GetParam().segments);
    if (GetParam().remarks.find("the end of the file where") == std::string::npos) {
        EXPECT_EQ(quick.remarks(), GetParam().remarks);
    }
}

INSTANTIATE_TEST_SUITE_P(all, motorola_rules, testing::ValuesIn(motorola_cases),
                         [](const auto& info) { return std::string{info.param.rule}; });

TEST(motorola_verifier, yields_header_data_and_start_address)
{
    const reading read = verify("motorola", "S00600004844521B\n" + s(3, 0x100, 40) + s(3, 0x128, 3) + s(7, 0x104));
    EXPECT_EQ(read.remarks(), "");
    EXPECT_EQ(read.found.header, "HDR");
    EXPECT_EQ(read.found.start_address, 0x104u);
    EXPECT_EQ(read.bytes.size(), 43u);
    EXPECT_EQ(read.bytes.at(0x127), 39);
    EXPECT_EQ(read.bytes.at(0x12A), 2);
    EXPECT_EQ(verify("motorola", s(1, 0, 4) + s(9, 0)).found.start_address, std::nullopt);
}

TEST(motorola_verifier, counts_records_that_are_damaged_too)
{
    EXPECT_EQ(verify("motorola", "S10700000001020"
                                 "3F3\nS1\n" +
                                     s(1, 4, 4) + s(5, 3))
                  .lines(),
              (std::vector<std::uint64_t>{1, 2}));
}

}  // namespace
}  // namespace tamrix::tests
