// The strict reader of SVF files: each rule of the grammar, with the remark that a break of it gives.
#include "verify/svf.h"

#include "verify/memory_reading.h"

#include <cstdio>
#include <random>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

svf_reading read_statements(const std::string& text, std::size_t piece = 65536)
{
    piecemeal_source from{text, piece};
    return verify_svf(from, "a.svf");
}

struct svf_case {
    std::string text;
    texts remarks;  // without the file's name
    std::uint64_t statements, bits;
};

const svf_case svf_cases[] = {
    {"! only a comment\n", {"2: no statement"}, 0, 0},
    {"", {"1: no statement"}, 0, 0},
    {"SIR 8 TDI (FF);", {}, 1, 8},
    {"sir 8 tdi(fF) Tdo ( 0 1 ) mask (00) smask (00);", {}, 1, 8},
    {"SIR 8 TDI (FF)", {"1: the end of the file where ; was expected"}, 0, 0},
    {"SIR 8 TDI (FF;\nSIR 8 TDI (00);", {"1: ; where ) was expected"}, 1, 8},
    {"SIR 8 TDI (FF", {"1: the end of the file where ) was expected"}, 0, 0},
    {"SIR 8 TDI FF;", {"1: FF where a value in parentheses was expected"}, 1, 8},
    {"SIR 8 TDI (FG);", {"1: character G where a hexadecimal digit was expected"}, 1, 8},
    {"SIR 8 TDI (FFF);", {"1: digit count 3 where 2 for 8 bits was expected"}, 1, 8},
    {"SIR 8 TDI (F);", {"1: digit count 1 where 2 for 8 bits was expected"}, 1, 8},
    {"SIR 6 TDI (3F);", {}, 1, 6},
    {"SIR 6 TDI (7F);", {"1: digit 7 at the front where a value of 6 bits was expected"}, 1, 6},
    {"SIR 8;", {"1: the end of the statement where TDI for the new length was expected"}, 1, 8},
    {"SIR 8 TDI (FF); SIR 8 TDO (01);", {}, 2, 16},
    {"SIR 8 TDI (FF); SIR 9 TDO (01F);",
     {"1: the end of the statement where TDI for the new length was expected"},
     2,
     17},
    {"SIR 8 TDI (FF) TDI (FF);", {"1: TDI where TDI once was expected"}, 1, 8},
    {"SIR 0;", {"1: 0 where 1 bit or more was expected"}, 1, 0},
    {"SIR x TDI (FF);", {"1: X where a count of bits was expected"}, 1, 0},
    {"SIR -8 TDI (FF);", {"1: -8 where a count of bits was expected"}, 1, 0},
    {"SIR 8.0 TDI (FF);", {"1: 8.0 where a count of bits was expected"}, 1, 0},
    {"SIR 99999999999 TDI (FF);", {"1: 99999999999 where a count of bits was expected"}, 1, 0},
    {"SIR;", {"1: the end of the statement where a count of bits was expected"}, 1, 0},
    {"SIR 8 TDX (FF);", {"1: TDX where TDI, TDO, MASK or SMASK was expected"}, 1, 0},
    {"SIR 8 TDX (FF); SIR 8;", {"1: TDX where TDI, TDO, MASK or SMASK was expected"}, 2, 8},
    {"SIR 8 TDI (FF) (00);", {"1: (00) where TDI, TDO, MASK or SMASK was expected"}, 1, 0},
    {"SIR 8 TDI;", {"1: the end of the statement where a value in parentheses was expected"}, 1, 8},
    {"SIR (8);", {"1: (8) where a count of bits was expected"}, 1, 0},
    {"HIR 0; TIR 0; HDR 2 TDI (3); TDR 4 TDI (F) TDO (F) MASK (F); SDR 5 TDI (1F); SDR 5;", {}, 6, 22},
    {"HDR 2;", {"1: the end of the statement where TDI for the new length was expected"}, 1, 0},
    {"SDR 8 TDI (F!comment\nF);", {}, 1, 8},
    {"SDR 8 // comment ;\nTDI (FF);", {}, 1, 8},
    {"SDR 8 / comment ;\nTDI (FF);", {"1: / where // was expected"}, 1, 8},
    {"BOGUS 1;", {"1: BOGUS where a command of SVF was expected"}, 1, 0},
    {"(FF);", {"1: (FF) where a command was expected"}, 1, 0},
    {";", {"1: ; without a statement where a statement was expected"}, 0, 0},
    {"STATE IDLE;", {}, 1, 0},
    {"STATE RESET IRSELECT IRPAUSE;", {}, 1, 0},
    {"STATE IRSHIFT;", {"1: IRSHIFT where RESET, IDLE, DRPAUSE or IRPAUSE was expected"}, 1, 0},
    {"STATE;", {"1: the end of the statement where RESET, IDLE, DRPAUSE or IRPAUSE was expected"}, 1, 0},
    {"STATE NOWHERE IDLE;", {"1: NOWHERE where a state was expected"}, 1, 0},
    {"ENDIR IDLE; ENDDR DRPAUSE;", {}, 2, 0},
    {"ENDIR IREXIT1;", {"1: IREXIT1 where RESET, IDLE, DRPAUSE or IRPAUSE was expected"}, 1, 0},
    {"ENDIR;", {"1: the end of the statement where RESET, IDLE, DRPAUSE or IRPAUSE was expected"}, 1, 0},
    {"ENDIR IDLE IDLE;", {"1: IDLE where ; or a word that goes there was expected"}, 1, 0},
    {"FREQUENCY; FREQUENCY 1E6 HZ; FREQUENCY 4.5 HZ;", {}, 3, 0},
    {"FREQUENCY 1E6;", {"1: the end of the statement where HZ was expected"}, 1, 0},
    {"FREQUENCY 0 HZ;", {"1: 0 where a frequency above 0 was expected"}, 1, 0},
    {"FREQUENCY x HZ;", {"1: X where a frequency was expected"}, 1, 0},
    {"FREQUENCY 1E HZ;", {"1: 1E where a frequency was expected"}, 1, 0},
    {"TRST ON; TRST OFF; TRST Z; TRST ABSENT;", {}, 4, 0},
    {"TRST MAYBE;", {"1: MAYBE where ON, OFF, Z or ABSENT was expected"}, 1, 0},
    {"TRST;", {"1: the end of the statement where ON, OFF, Z or ABSENT was expected"}, 1, 0},
    {"RUNTEST 100 TCK; RUNTEST IDLE 100 SCK 1E-3 SEC; RUNTEST DRPAUSE 1.0 SEC MAXIMUM 2 SEC ENDSTATE IDLE; RUNTEST 5 "
     "TCK ENDSTATE RESET;",
     {},
     4,
     0},
    {"RUNTEST;", {"1: the end of the statement where a count or a time was expected"}, 1, 0},
    {"RUNTEST IDLE;", {"1: the end of the statement where a count or a time was expected"}, 1, 0},
    {"RUNTEST 100;", {"1: the end of the statement where SEC was expected"}, 1, 0},
    {"RUNTEST 100 TICKS;", {"1: TICKS where SEC was expected"}, 1, 0},
    {"RUNTEST 1.5 TCK;", {"1: 1.5 where a count of clocks was expected"}, 1, 0},
    {"RUNTEST 1 SEC MAXIMUM 0.5 SEC;", {"1: a maximum below the minimum where at least as much was expected"}, 1, 0},
    {"RUNTEST ENDSTATE IDLE;", {"1: ENDSTATE where a count or a time was expected"}, 1, 0},
    {"RUNTEST IRSHIFT 1 SEC;", {"1: IRSHIFT where RESET, IDLE, DRPAUSE or IRPAUSE was expected"}, 1, 0},
    {"RUNTEST 1 SEC 2 SEC;", {"1: 2 where ; or a word that goes there was expected"}, 1, 0},
    {"RUNTEST 1 TCK MAXIMUM 2 SEC;", {"1: MAXIMUM where ; or a word that goes there was expected"}, 1, 0},
    {"PIOMAP (IN A OUT B INOUT C); PIO (HLX);", {}, 2, 0},
    {"PIO (H);", {"1: PIO where PIOMAP ahead of it was expected"}, 1, 0},
    {"PIOMAP (IN A); PIO (HL);", {"1: level count 2 where 1 was expected"}, 2, 0},
    {"PIOMAP (IN A); PIO (Q);", {"1: character Q where H, L, Z, U, D or X was expected"}, 2, 0},
    {"PIOMAP (UP A);", {"1: UP where IN, OUT or INOUT was expected"}, 1, 0},
    {"PIOMAP (IN);", {"1: the end of the pins where a direction and a name for each was expected"}, 1, 0},
    {"PIOMAP ();", {"1: the end of the pins where a direction and a name for each was expected"}, 1, 0},
    {"PIOMAP IN A;", {"1: IN where a list of pins in parentheses was expected"}, 1, 0},
    {"SDR 8 TDI (FF));", {"1: ) where TDI, TDO, MASK or SMASK was expected"}, 1, 0},
    {"\x01"
     ";",
     {"1: ? where a command of SVF was expected"},
     1,
     0},
    {"SIR 8 TDI (FF);\n! end", {}, 1, 8},
};

TEST(verify_svf, names_each_break_of_a_rule)
{
    for (const auto& [text, remarks, statements, bits] : svf_cases) {
        const auto held = read_statements(text);
        texts expected;
        for (const std::string& one : remarks) expected.push_back("a.svf:" + one);
        EXPECT_EQ(texts_of(held), expected) << text;
        EXPECT_EQ(held.statements, statements) << text;
        EXPECT_EQ(held.bits_shifted, bits) << text;
    }
}

TEST(verify_svf, does_not_depend_on_the_pieces_of_the_source)
{
    for (const svf_case& one : svf_cases) {
        for (const std::size_t piece : {1, 7, 64}) {
            const auto held = read_statements(one.text, piece);
            EXPECT_EQ(texts_of(held), texts_of(read_statements(one.text))) << one.text;
            EXPECT_EQ(held.bits_shifted, one.bits);
        }
    }
}

TEST(verify_svf, takes_values_longer_than_any_block_with_comments_between_their_digits)
{
    std::mt19937 random{1};
    for (const std::uint64_t bits : {65536u, 65537u, 500003u}) {
        std::string value(bits / 4 + (bits % 4 != 0), '0');
        for (char& digit : value) digit = "0123456789abcdefABCDEF"[random() % 22];
        value[0] = '0';
        for (std::size_t at = 60; at < value.size(); at += 80) value.insert(at, at % 160 == 60 ? "\r\n" : " ! f)\n");
        const std::string text = "SDR " + std::to_string(bits) + " TDI (" + value + ");\r\n";
        EXPECT_EQ(texts_of(read_statements(text)), texts{});
        EXPECT_EQ(read_statements(text).bits_shifted, bits);
        EXPECT_EQ(texts_of(read_statements(text + "Q;")).size(), 1u);
    }
}

TEST(verify_svf, says_the_line_of_the_word)
{
    EXPECT_EQ(texts_of(read_statements("! one\r\nSDR 8\r\nTDI\r\n(FF)\r\nTDX (00);\r\nSTATE\nHERE;")),
              (texts{"a.svf:5: TDX where TDI, TDO, MASK or SMASK was expected",
                     "a.svf:7: HERE where RESET, IDLE, DRPAUSE or IRPAUSE was expected"}));
}

bool is_hex(char one) { return std::string_view{"0123456789ABCDEFabcdef"}.find(one) != std::string_view::npos; }

bool is_letter(char one) { return (one | 0x20) >= 'a' && (one | 0x20) <= 'z'; }

/// Why a turned bit cannot be found; the format has no checksum. "" where it should be.
std::string why_free(const std::string& text, std::size_t at, char turned)
{
    const std::string_view before{text.data(), at};
    const std::size_t comment = before.rfind('!'), line_end = before.rfind('\n');
    if (comment != std::string_view::npos && (line_end == std::string_view::npos || line_end < comment))
        return "comment";
    if (text[at] == '!' && at == 0) return "comment";
    if (is_letter(text[at]) && (text[at] ^ 0x20) == turned) return "the case of a letter";
    if (before.rfind('(') != std::string_view::npos && before.rfind('(') > before.rfind(')') + 1 && is_hex(text[at]) &&
        is_hex(turned))
        return "a digit of a value";
    if (before.ends_with("RUNTEST ") || before.ends_with("RUNTEST 1") || before.ends_with("RUNTEST 10"))
        return "a count";
    return "";
}

TEST(verify_svf, finds_each_turned_bit_but_those_of_values_counts_comments_and_letters_case)
{
    const std::string text =
        "! x\nTRST OFF;\nSIR 8 TDI (5A) TDO (01);\nSDR 8 TDI (00);\nRUNTEST 100 TCK;\nSTATE IDLE;\n";
    ASSERT_EQ(texts_of(read_statements(text)), texts{});
    std::string others;
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string turned = text;
            turned[at] = static_cast<char>(turned[at] ^ (1 << bit));
            if (read_statements(turned).damaged() || !why_free(text, at, turned[at]).empty()) continue;
            char line[48];
            std::snprintf(line, sizeof line, "%zu %02X to %02X\n", at, text[at],
                          static_cast<unsigned char>(turned[at]));
            others += line;
        }
    }
    EXPECT_EQ(others, "");
}

}  // namespace
}  // namespace tamrix::tests
