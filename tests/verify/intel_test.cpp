#include "verify/verify_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

const std::string intel_end = ":00000001FF\n";

struct intel_case {
    const char* rule;
    std::string content;
    std::string remarks;
    std::string segments;
};

std::string data_line(unsigned address, std::size_t count = 4)
{
    return intel_record(0, address, counted(count)) + "\n";
}

const intel_case intel_cases[] = {
    {"sound", data_line(0x10) + intel_end, "", "10+4"},
    {"lower_case", ":0400100000010203e6\n" + intel_end, "", "10+4"},
    {"no_line_end_at_the_end", data_line(0) + ":00000001FF", "", "0+4"},
    {"blank_lines", "\n  \t\n" + data_line(0) + "\r\n" + intel_end + "\n \n", "", "0+4"},
    {"carriage_returns",
     ":040000000001020"
     "3F6\r:00000001FF\r",
     "", "0+4"},
    {"control_z",
     data_line(0) + intel_end +
         "\x1A"
         "anything",
     "", "0+4"},
    {"control_z_after_the_record", data_line(0) + ":00000001FF\x1A", "", "0+4"},
    {"control_z_too_early", data_line(0) + "\x1A" + intel_end,
     "f:2: the end of the file where the end record :00000001FF was expected\n", "0+4"},
    {"checksum", data_line(0) + ":0400100000010203E7\n" + data_line(0x14) + intel_end,
     "f:2: checksum E7 where E6 was expected\n", "0+4 10+8"},
    {"checksum_of_the_end", data_line(0) + ":00000001FE\n", "f:2: checksum FE where FF was expected\n", "0+4"},
    {"checksum_of_a_base", ":020000040800F3\n" + data_line(0) + intel_end, "f:1: checksum F3 where F2 was expected\n",
     "8000000+4"},
    {"no_digit", ":04001000000G0203E6\n" + data_line(0) + intel_end,
     "f:1: 'G' in column 13 where a hexadecimal digit was expected\n", "0+4"},
    {"unprintable",
     ":040010000\x01"
     "010203E6\n" +
         data_line(0) + intel_end,
     "f:1: character 01 in column 11 where a hexadecimal digit was expected\n", "0+4"},
    {"short", ":04001000000102\n" + data_line(0) + intel_end, "f:1: a line of 15 characters where 19 was expected\n",
     "0+4"},
    {"half_a_byte", ":0400100000010203E\n" + data_line(0) + intel_end,
     "f:1: a line of 18 characters where 19 was expected\n", "0+4"},
    {"head_alone", ":04\n" + data_line(0) + intel_end, "f:1: a line of 3 characters where 9 was expected\n", "0+4"},
    {"count_too_small", ":0300100000010203E6\n" + intel_end, "f:1: a line of 19 characters where 17 was expected\n",
     "10+3"},
    {"characters_after_it", ":0400100000010203E6 ;\n" + intel_end,
     "f:1: ' ' in column 20 where the end of the line was expected\n", "10+4"},
    {"characters_ahead_of_it", "x:0400100000010203E6\n" + intel_end, "f:1: 'x' in column 1 where \":\" was expected\n",
     "10+4"},
    {"comment", "; text\n" + data_line(0) + intel_end, "f:1: a line without \":\" where a record was expected\n",
     "0+4"},
    {"unknown_type", intel_record(6, 0, {}) + "\n" + data_line(0) + intel_end,
     "f:1: record type 06 where 00 to 05 was expected\n", "0+4"},
    {"count_of_a_base", intel_record(4, 0, {1}) + "\n" + data_line(0) + intel_end,
     "f:1: count 01 where 02 was expected\n", "0+4"},
    {"count_of_a_start", intel_record(5, 0, {1, 2}) + "\n" + data_line(0) + intel_end,
     "f:1: count 02 where 04 was expected\n", "0+4"},
    {"count_of_the_end", data_line(0) + intel_record(1, 0, {1}) + "\n", "f:2: count 01 where 00 was expected\n", "0+4"},
    {"address_of_a_base", intel_record(2, 5, {0, 1}) + "\n" + data_line(0) + intel_end,
     "f:1: address 0005 where 0000 was expected\n", "10+4"},
    {"no_end", data_line(0), "f:2: the end of the file where the end record :00000001FF was expected\n", "0+4"},
    {"data_after_the_end", data_line(0) + intel_end + data_line(8) + data_line(0x10),
     "f:3: a line after the end record where the end of the file was expected\n", "0+4"},
    {"no_data", intel_end, "f: no data\n", ""},
    {"empty", "", "f:1: the end of the file where the end record :00000001FF was expected\nf: no data\n", ""},
    {"overlap", data_line(0) + data_line(8) + data_line(2) + intel_end,
     "f:3: data for 0002 to 0003, which has data of an earlier record\n", "0+6 8+4"},
    {"overlap_again", data_line(0) + data_line(0) + intel_end,
     "f:2: data for 0000 to 0003, which has data of an earlier record\n", "0+4"},
    {"segment_base", intel_record(2, 0, {0x12, 0x34}) + "\n" + data_line(0x10) + intel_end, "", "12350+4"},
    {"linear_base", intel_record(4, 0, {0x80, 0x01}) + "\n" + data_line(0x10) + intel_end, "", "80010010+4"},
    {"last_base_holds",
     intel_record(4, 0, {0, 1}) + "\n" + data_line(0) + intel_record(2, 0, {0x20, 0}) + "\n" + data_line(0) + intel_end,
     "", "10000+4 20000+4"},
    {"past_64_k", data_line(0xFFFE) + intel_end, "f:1: data up to 00010001 where at most FFFF was expected\n",
     "0+2 FFFE+2"},
    {"past_64_k_after_other_data", data_line(0xFFFA) + data_line(0xFFFE) + intel_end,
     "f:2: data up to 00010001 where at most FFFF was expected\n", "0+2 FFFA+6"},
    {"unknown_type_after_data", data_line(0) + intel_record(6, 4, counted(4)) + "\n" + intel_end,
     "f:2: record type 06 where 00 to 05 was expected\n", "0+4"},
    {"past_a_segment", intel_record(2, 0, {0x10, 0}) + "\n" + data_line(0xFFFE) + intel_end,
     "f:2: data up to 00020001 where at most 0001FFFF was expected\n", "10000+2 1FFFE+2"},
    {"past_64_k_of_linear_addresses", intel_record(4, 0, {0, 1}) + "\n" + data_line(0xFFFE) + intel_end, "", "1FFFE+4"},
    {"past_4_g", intel_record(4, 0, {0xFF, 0xFF}) + "\n" + data_line(0xFFFE) + intel_end,
     "f:2: data up to 100000001 where at most FFFFFFFF was expected\n", "0+2 FFFFFFFE+2"},
    {"two_starts",
     data_line(0) + intel_record(5, 0, {0, 0, 1, 0}) + "\n" + intel_record(5, 0, {0, 0, 2, 0}) + "\n" + intel_end,
     "f:3: start address 00000200 where that of an earlier record, 00000100 was expected\n", "0+4"},
};

class intel_rules : public testing::TestWithParam<intel_case> {};

TEST_P(intel_rules, are_checked)
{
    const reading read = verify("intel", GetParam().content);
    EXPECT_EQ(read.remarks(), GetParam().remarks);
    EXPECT_EQ(read.segments(), GetParam().segments);
    const reading quick = verify("intel", GetParam().content + blank_lines());
    EXPECT_EQ(quick.segments(), GetParam().segments);
    if (GetParam().remarks.find("the end of the file where") == std::string::npos) {
        EXPECT_EQ(quick.remarks(), GetParam().remarks);
    }
    EXPECT_EQ(read.found.damaged(), !GetParam().remarks.empty());
}

INSTANTIATE_TEST_SUITE_P(all, intel_rules, testing::ValuesIn(intel_cases),
                         [](const auto& info) { return std::string{info.param.rule}; });

TEST(intel_verifier, yields_what_the_records_hold)
{
    const reading read = verify("intel", data_line(0x10, 32) + data_line(0x30, 5) + intel_end);
    EXPECT_EQ(read.bytes.size(), 37u);
    EXPECT_EQ(read.bytes.at(0x2F), 31);
    EXPECT_EQ(read.bytes.at(0x34), 4);
    EXPECT_EQ(read.found.record_bytes, 37u);
    EXPECT_EQ(read.found.start_address, std::nullopt);
    EXPECT_EQ(read.pieces, 1u);
}

TEST(intel_verifier, yields_the_start_address_of_each_kind)
{
    const auto start = [](const std::string& record) {
        return verify("intel", data_line(0) + record).found.start_address;
    };
    EXPECT_EQ(start(intel_record(5, 0, {0x08, 0, 1, 0xC1}) + "\n" + intel_end), 0x080001C1u);
    EXPECT_EQ(start(intel_record(5, 0, {0, 0, 0, 0}) + "\n" + intel_end), 0u);
    EXPECT_EQ(start(intel_record(3, 0, {0x12, 0, 0x34, 0x56}) + "\n" + intel_end), 0x15456u);
    EXPECT_EQ(start(intel_record(1, 0x100, {})), 0x100u);
    EXPECT_EQ(start(intel_record(5, 0, {0, 0, 2, 0}) + "\n" + intel_record(1, 0x100, {})), 0x200u);
    EXPECT_EQ(start(intel_end), std::nullopt);
}

TEST(intel_verifier, goes_on_after_lines_of_any_length)
{
    const reading read = verify("intel", data_line(0) + std::string(3'000'000, 'x') + "\n" + data_line(4) + intel_end);
    EXPECT_EQ(read.remarks(), "f:2: a line of more than 49152 characters where a record was expected\n");
    EXPECT_EQ(read.segments(), "0+8");
}

TEST(intel_verifier, keeps_the_first_remarks_and_counts_all)
{
    std::string content;
    for (int i = 0; i < 250; ++i) content += "x\n";
    const reading read = verify("intel", content + data_line(0) + intel_end);
    EXPECT_EQ(read.found.remark_count, 250u);
    EXPECT_EQ(read.found.remarks.size(), verification::most_kept);
}

TEST(intel16_verifier, reads_words_with_the_high_byte_first)
{
    const reading read = verify("intel16", ":020000040001F9\r\n:02008000C0B4D4ED49\r\n" + intel_end);
    EXPECT_EQ(read.remarks(), "");
    EXPECT_EQ(read.segments(), "20100+4");
    EXPECT_EQ(read.bytes.at(0x20100), 0xB4);
    EXPECT_EQ(read.bytes.at(0x20101), 0xC0);
    EXPECT_EQ(read.bytes.at(0x20103), 0xD4);
}

TEST(intel16_verifier, checks_the_count_in_words)
{
    EXPECT_EQ(verify("intel16", ":04000000C0B4D4ED"
                                "C7\n" +
                                    intel_end)
                  .remarks(),
              "f:1: a line of 19 characters where 27 was expected\nf: no data\n");
    EXPECT_EQ(verify("intel16", ":01000000123"
                                "4B8\n" +
                                    intel_end)
                  .remarks(),
              "f:1: checksum B8 where B9 was expected\n");
    EXPECT_EQ(verify("intel16", ":02FFFF00000100"
                                "02FD\n" +
                                    intel_end)
                  .segments(),
              "0+2 1FFFE+2");
}

TEST(intel16_verifier, takes_a_base_with_its_count_in_words)
{
    const reading read = verify("intel16", ":010000040001FA\n:01000000123"
                                           "4B9\n" +
                                               intel_end);
    EXPECT_EQ(read.remarks(), "");
    EXPECT_EQ(read.segments(), "20000+2");
}

}  // namespace
}  // namespace tamrix::tests
