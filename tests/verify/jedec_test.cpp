// The strict reader of JEDEC files: each rule of the standard, with the remark that a break of it gives.
#include "verify/jedec.h"

#include "verify/memory_reading.h"

#include <cstdio>
#include <random>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

jedec_reading read_fuses(const std::string& text, std::size_t piece = 65536)
{
    piecemeal_source from{text, piece};
    return verify_jedec(from, "a.jed");
}

texts jedec_remarks(const std::string& text) { return texts_of(read_fuses(text)); }

/// A text between STX and ETX, without a computed checksum.
std::string framed(const std::string& text) { return "\x02" + text + "\x03" + "0000"; }

/// The checksums as anybody would add them up who knows nothing of this program.
unsigned slow_fuse_sum(const std::string& bits)
{
    unsigned sum = 0;
    for (std::size_t first = 0; first < bits.size(); first += 8) {
        unsigned byte = 0;
        for (std::size_t bit = 0; bit < 8; ++bit)
            if (first + bit < bits.size() && bits[first + bit] == '1') byte |= 1u << bit;
        sum = (sum + byte) % 0x10000;
    }
    return sum;
}

unsigned slow_text_sum(const std::string& text)
{
    unsigned sum = 0;
    for (std::size_t at = text.find('\x02'); at <= text.find('\x03'); ++at)
        sum = (sum + static_cast<unsigned char>(text[at]) % 0x80) % 0x10000;
    return sum;
}

std::string hex4(unsigned value)
{
    char text[8];
    std::snprintf(text, sizeof text, "%04X", value);
    return text;
}

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

/// A made file with everything in it, and its parts as plain texts.
struct made_file {
    std::string text, bits;
    std::vector<std::string> vectors;
};

made_file random_file(unsigned seed)
{
    std::mt19937 random{seed};
    const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    made_file made;
    const unsigned fuses = 1 + below(3000), pins = 1 + below(40), row = 1 + below(70), vectors = below(20);
    for (unsigned i = 0; i < fuses; ++i) made.bits.push_back(below(2) != 0 ? '1' : '0');
    std::string text = "\x02Made*\nQP" + std::to_string(pins) + "*QF" + std::to_string(fuses) + "*QV" +
                       std::to_string(vectors) + "*\r\n";
    for (unsigned first = 0; first < fuses; first += row) {
        std::string line = made.bits.substr(first, row);
        line.insert(below(static_cast<unsigned>(line.size()) + 1), below(2) != 0 ? " \r\n" : " ");
        text += "L" + std::to_string(first) + "\n" + line + "*\r\n";
    }
    for (unsigned i = 0; i < vectors; ++i) {
        std::string& one = made.vectors.emplace_back();
        for (unsigned pin = 0; pin < pins; ++pin) one.push_back("01CKHLXZNF"[below(10)]);
        text += "V" + std::to_string(i + 1) + " " + one + "*\r\n";
    }
    text += "C" + hex4(slow_fuse_sum(made.bits)) + "*\r\n\x03";
    made.text = text + hex4(slow_text_sum(text));
    return made;
}

TEST(verify_jedec, reads_random_files_as_a_slow_model_made_them_in_pieces_of_any_size)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const made_file made = random_file(seed);
        for (const std::size_t piece : {1, 7, 64, 65536}) {
            const auto held = read_fuses(made.text, piece);
            ASSERT_EQ(texts_of(held), texts{}) << made.text;
            ASSERT_EQ(held.map.vectors, made.vectors);
            ASSERT_EQ(held.map.fuses.size(), made.bits.size());
            for (std::size_t i = 0; i < made.bits.size(); ++i) ASSERT_EQ(held.map.fuses[i], made.bits[i] - '0');
            ASSERT_EQ(held.stated_transmission, held.transmission_sum);
        }
    }
}

TEST(verify_jedec, counts_lines_across_blocks_of_the_source)
{
    const std::string note(65536 - 12, 'n');  // the CR is the last of a block
    const std::string text = framed("T*QF8*F0*N" + note + "\r\n*Y*");
    EXPECT_EQ(text[65535], '\r');
    EXPECT_EQ(jedec_remarks(text), texts{"a.jed:2: field Y where a field of the standard was expected"});
    EXPECT_EQ(texts_of(read_fuses(text, 7)), jedec_remarks(text));
}

/// Turns each bit of a sound file. What is not found is returned: the offsets with the characters there.
std::string unprotected(const std::string& text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string turned_to;
        for (int bit = 0; bit < 8; ++bit) {
            std::string turned = text;
            turned[at] = static_cast<char>(turned[at] ^ (1 << bit));
            if (!read_fuses(turned).damaged()) turned_to.push_back(turned[at]);
        }
        if (turned_to.empty()) continue;
        char place[32];
        std::snprintf(place, sizeof place, "%zu %c: ", at, text[at] < ' ' ? '.' : text[at]);
        result += place + std::to_string(turned_to.size()) + "\n";
    }
    return result;
}

TEST(verify_jedec, finds_each_turned_bit_of_a_file_with_a_transmission_checksum)
{
    const std::string text = "\x02T\xFC*\r\nQP4*QF16*QV1*F0*\r\nNab*\r\nL0 01011100*\r\nV1 01XH*\r\nC003A*\r\n\x03";
    const std::string whole = text + hex4(slow_text_sum(text)) + "\r\n";
    ASSERT_EQ(jedec_remarks(whole), texts{});
    // The eighth bit in header and note, which is not in the standard's sum; the case of the sum's own letters; a tab
    // or the end mark of old systems in the place of the last line end.
    EXPECT_EQ(unprotected(whole), "1 T: 1\n2 .: 1\n25 a: 1\n26 b: 1\n64 B: 1\n65 E: 1\n66 A: 1\n67 .: 1\n68 .: 1\n");
}

TEST(verify_jedec, finds_a_turned_fuse_by_the_fuse_checksum_alone)
{
    const std::string whole = framed("T*QP2*QF8*QV1*F0*L0 0101*V1 0H*U01*C000A*");
    ASSERT_EQ(jedec_remarks(whole), texts{});
    // The header; a fuse count that the default fills; conditions; the field U, which may be E or T, and its bits; the
    // case of a digit of the checksum.
    EXPECT_EQ(unprotected(whole), "1 T: 7\n9 8: 1\n29 0: 4\n30 H: 2\n32 U: 2\n33 0: 2\n34 1: 1\n40 A: 1\n");
}

}  // namespace
}  // namespace tamrix::tests
