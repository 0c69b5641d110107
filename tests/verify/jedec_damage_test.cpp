// The strict reader of JEDEC files against a slow model of sound ones, and with each bit turned.
#include "verify/jedec_reading.h"

#include <random>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

/// A made file with everything in it, and its parts as plain texts.
struct made_file {
    std::string text, bits;
    std::vector<std::string> vectors;
};

made_file random_file(unsigned start)
{
    std::mt19937 random{start};
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
    for (unsigned start = 1; start <= 60; ++start) {
        const made_file made = random_file(start);
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
