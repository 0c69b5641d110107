// The strict reader of JEDEC files: each rule of the standard, with the remark that a break of it gives.
#include "verify/jedec_reading.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

TEST(verify_jedec, yields_what_a_sound_file_holds)
{
    const auto held =
        read_fuses(framed("My part\r\nof 1990*\r\nN a note*QP4*QF16*QV2*G0*F1*X0*\r\nL0000 0101\r\n11 00*\r\n"
                          "L12 0000*U0110*E1*P 1 2 3 4*\r\nV0001 01XH*V0002 N N Z L*C0049*\r\n"));
    EXPECT_EQ(texts_of(held), texts{});
    EXPECT_EQ(held.map.header, "My part\r\nof 1990");
    EXPECT_EQ(held.map.fuses, (std::vector<std::uint8_t>{0, 1, 0, 1, 1, 1, 0, 0, 1, 1, 1, 1, 0, 0, 0, 0}));
    EXPECT_EQ(held.map.vectors, (std::vector<std::string>{"01XH", "NNZL"}));
    EXPECT_EQ(held.map.pins, 4u);
    EXPECT_TRUE(held.map.default_fuse);
    EXPECT_EQ(held.map.others,
              (std::vector<kept_field>{
                  {'N', " a note"}, {'G', "0"}, {'X', "0"}, {'U', "0110"}, {'E', "1"}, {'P', " 1 2 3 4"}}));
    EXPECT_EQ(held.in_rows, 12u);
    EXPECT_EQ(held.missing, 0u);
    EXPECT_EQ(held.stated_count, 16u);
    EXPECT_EQ(held.fuse_sum, 0x49);
    EXPECT_EQ(held.stated_fuse_sum, 0x0049);
    EXPECT_EQ(held.stated_transmission, 0);
}

struct broken_rule {
    std::string fields;
    texts remarks;
};

TEST(verify_jedec, names_each_break_of_a_rule)
{
    const broken_rule cases[] = {
        {"T*QF8*L0 01010101*", {}},
        {"T*QF8*F0*L0 0101*CB*", {"field CB where C with four digits was expected"}},
        {"T*QF8*F0*L0 0101*C000B*", {"fuse checksum 000B where 000A was expected"}},
        {"T*QF8*F0*L0 0101*C000A*C000A*", {"a second C where only one was expected"}},
        {"QF8*L0 01010101*", {"field QF8 in the header where * ahead of it was expected"}},
        {"T*L0 01010101*", {"a row of fuses where the fuse count QF ahead of it was expected"}},
        {"T*QF8*QF8*L0 01010101*", {"a second QF where only one was expected"}},
        {"T*QF8x*", {"field QF8x where QF, QP or QV with a number was expected", "no fuses and no vectors"}},
        {"T*QX1*", {"field QX1 where QF, QP or QV with a number was expected", "no fuses and no vectors"}},
        {"T*QF99999999*", {"QF99999999 where up to 16777216 was expected", "no fuses and no vectors"}},
        {"T*QF8*L0 010101010*", {"fuse 8 where 0 to 7 was expected"}},
        {"T*QF8*L9 0*",
         {"fuse 9 where 0 to 7 was expected",
          "fuses without a state: 8, the first of them 0 where a row or F was expected"}},
        {"T*QF8*L4 0101*L0 01010*", {"fuse 4 again where each fuse once was expected"}},
        {"T*QF8*L4 0101*", {"fuses without a state: 4, the first of them 0 where a row or F was expected"}},
        {"T*QF8*L0 01012101*",
         {"character 2 where 0 or 1 was expected",
          "fuses without a state: 1, the first of them 7 where a row or F was expected"}},
        {"T*QF8*L0 *",
         {"row 0 without fuses where 0 or 1 was expected",
          "fuses without a state: 8, the first of them 0 where a row or F was expected"}},
        {"T*QF8*L 01*",
         {"field L 01 where a fuse number and a blank was expected",
          "fuses without a state: 8, the first of them 0 where a row or F was expected"}},
        {"T*QF8*Lx 01*",
         {"field Lx 01 where a fuse number and a blank was expected",
          "fuses without a state: 8, the first of them 0 where a row or F was expected"}},
        {"T*QF8*L0*",
         {"field L0 where a fuse number and a blank was expected",
          "fuses without a state: 8, the first of them 0 where a row or F was expected"}},
        {"T*QF8*L0 01010101*F0*", {"the default of fuses after rows where F ahead of them was expected"}},
        {"T*QF8*F2*", {"field F2 where F0 or F1 was expected", "no fuses and no vectors"}},
        {"T*QF8*F0*F0*", {"a second F where only one was expected"}},
        {"T*QF8*L0 01010101", {"the end of the text where * was expected"}},
        {"T", {"the end of the text where * was expected", "no fuses and no vectors"}},
        {"T*", {"no fuses and no vectors"}},
        {"T*QF8*", {"no fuses and no vectors"}},
        {"T*QF8*F0*V0001 01*",
         {"vector 1: condition count 2 where the count of pins QP ahead of it was expected",
          "vectors without their count where QV was expected"}},
        {"T*QP2*QV1*V0001 01*", {}},
        {"T*QP2*QV2*V0001 01*", {"vector count 1 where 2 was expected"}},
        {"T*QP2*QV2*V0001 01*V0003 11*", {"vector 3 where vector 2 was expected"}},
        {"T*QP2*QV2*V0001 01*V0001 11*", {"vector 1 where vector 2 was expected"}},
        {"T*QP2*QV1*V0001 011*", {"vector 1: condition count 3 where 2 was expected"}},
        {"T*QP2*QV1*V0001 0Q*", {"vector 1: character Q where a test condition was expected"}},
        {"T*QP2*V0001 01*", {"vectors without their count where QV was expected"}},
        {"T*QV1*V0001 01*", {"vector 1: condition count 2 where the count of pins QP ahead of it was expected"}},
        {"T*QP2*QV1*V1*",
         {"field V1 where a vector number and a blank was expected", "no fuses and no vectors",
          "vector count 0 where 1 was expected"}},
        {"T*QP2*QF8*F0*P 1*", {"pin count 1 where 2 was expected"}},
        {"T*QP2*QF8*F0*P 1 x*", {"field P 1 x where a list of pins was expected"}},
        {"T*QF8*F0*G2*", {"field G2 where 0 or 1 was expected"}},
        {"T*QF8*F0*U2*", {"field U2 where 0 or 1 was expected"}},
        {"T*QF8*F0*UH2G*", {"field UH2G where a text of hexadecimal digits was expected"}},
        {"T*QF8*F0*UAxyz*E1 0*", {}},
        {"T*QF8*F0*A*", {"field A where a number was expected"}},
        {"T*QF8*F0*K0 FF*", {"field K0 FF where a field of the standard was expected"}},
        {"T*QF8*F0*q1*", {"field q1 where a field of the standard was expected"}},
        {"T*QF8*F0*\a*", {"character 07 where a field of the standard was expected"}},
        {"T*QF8*F0*N\a*", {"character 07 where text was expected"}},
        {"T\xE9"
         "*N\xE9"
         "*QF8*F0*G\xE9"
         "*",
         {"character E9 where text was expected", "field G? where 0 or 1 was expected"}},
        {"T*QF8*F0**\n*", {}},
        {"T*QF8*F0*S01N*R0123ABCD*T5*J1 2*D12*A25*X1*", {}},
        {"T*QF8*F0*Sq*Rx*Tx*Jx*Dx*Ax*X2*",
         {"field Sq where a list of test conditions was expected",
          "field Rx where a text of hexadecimal digits was expected", "field Tx where a number was expected",
          "field Jx where a number was expected", "field Dx where a number was expected",
          "field Ax where a number was expected", "field X2 where 0 or 1 was expected"}},
        {"T*QF8 \r\n*F0 \r\n*L0 0101 \r\n*G1 \r\n*C000A\r\n*", {}},
    };
    for (const auto& [fields, remarks] : cases) {
        texts expected;
        for (const std::string& one : remarks) expected.push_back("a.jed:1: " + one);
        EXPECT_EQ(jedec_remarks(framed(fields)), expected) << fields;
    }
}

TEST(verify_jedec, wants_the_frame_of_a_transmission)
{
    const std::pair<std::string, texts> cases[] = {
        {"", {"a.jed:1: the end of the file where STX was expected"}},
        {" \r\n", {"a.jed:2: the end of the file where STX was expected"}},
        {"T*QF8*F0*\x03"
         "0000",
         {"a.jed:1: character T where STX was expected"}},
        {"x\n\x02T*QF8*F0*\x03"
         "0000",
         {"a.jed:1: character x where STX was expected", "a.jed:2: character 02 where text was expected"}},
        {"\x02T*QF8*F0*", {"a.jed:1: the end of the file where ETX was expected"}},
        {"\x02T*QF8*F0*\x03",
         {"a.jed:1: the end of the file where a transmission checksum of four digits was expected"}},
        {"\x02T*QF8*F0*\x03"
         "00g0",
         {"a.jed:1: character g where a transmission checksum of four digits was expected"}},
        {"\x02T*QF8*F0*\x03"
         "1234",
         {"a.jed:1: transmission checksum 1234 where 021C was expected"}},
        {"\n\x02T*QF8*F0*\x03"
         "021c",
         {}},
        {"\x02T*QF8*F0*\x03"
         "0000\r\n\x1A",
         {}},
        {"\x02T*QF8*F0*\x03"
         "0000\rmore",
         {"a.jed:2: character m where the end of the file was expected"}},
    };
    for (const auto& [text, remarks] : cases) EXPECT_EQ(jedec_remarks(text), remarks) << text;
}

TEST(verify_jedec, takes_the_checksum_of_letters_beyond_ascii_with_and_without_their_eighth_bit)
{
    const std::string text = "\x02M\xFCller*QF8*F0*\x03";
    const unsigned seven = slow_text_sum(text);
    EXPECT_EQ(jedec_remarks(text + hex4(seven)), texts{});
    EXPECT_EQ(jedec_remarks(text + hex4(seven + 0x80)), texts{});
    EXPECT_EQ(jedec_remarks(text + hex4(seven + 1)).size(), 1u);
}

TEST(verify_jedec, counts_lines_of_every_kind)
{
    EXPECT_EQ(jedec_remarks(framed("T*\r\nQF8*\nF0*\r\r\nY*")),
              texts{"a.jed:5: field Y where a field of the standard was expected"});
    EXPECT_EQ(jedec_remarks(framed("T*QF8*F0*\nL0\n0000\n0002*")),
              texts{"a.jed:4: character 2 where 0 or 1 was expected"});
    EXPECT_EQ(jedec_remarks(framed("T*QF8*F0*\nC0001*\nL0\n00000000*")),
              texts{"a.jed:2: fuse checksum 0001 where 0000 was expected"});
}

TEST(verify_jedec, keeps_the_count_of_fuses_by_the_rows_where_the_file_does_not_give_it)
{
    const auto held = read_fuses(framed("T*L4 1111*L0 0*"));
    EXPECT_EQ(held.map.fuses, (std::vector<std::uint8_t>{0, 0, 0, 0, 1, 1, 1, 1}));
    EXPECT_EQ(held.missing, 3u);
    EXPECT_FALSE(held.stated_count);
}

}  // namespace
}  // namespace tamrix::tests
