// JEDEC files in the form of the standard.
#include "verify/jedec_writer.h"

#include "verify/jedec.h"
#include "verify/memory_reading.h"

#include <random>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

jedec_reading read_back(const std::string& text)
{
    piecemeal_source from{text};
    return verify_jedec(from, "a.jed");
}

TEST(jedec_file, has_every_field_in_the_order_of_the_standard)
{
    const fuse_map map{
        .header = "My part\nrev 2\r\nbits*",
        .fuses = {0, 1, 0, 1, 1, 1, 0, 0, 1, 1},
        .pins = 4,
        .vectors = {"01XH", "NNZL"},
        .others = {{'U', "0110"}, {'G', "1"}, {'N', " a note"}, {'X', "0"}, {'P', " 1 2 3 4"}, {'S', "01NN"}}};
    EXPECT_EQ(jedec_file(map, 4),
              "\x02My part\r\nrev 2\r\nbits *\r\nN a note*\r\nQP4*\r\nQF10*\r\nQV2*\r\nG1*\r\nF0*\r\nX0*\r\n"
              "L0000 0101*\r\nL0004 1100*\r\nL0008 11*\r\nU0110*\r\nP 1 2 3 4*\r\n"
              "V0001 01XH*\r\nV0002 NNZL*\r\nS01NN*\r\nC003D*\r\n\x03"
              "2096\r\n");
}

TEST(jedec_file, without_fuses_has_vectors_alone)
{
    EXPECT_EQ(jedec_file({.vectors = {"01"}}, 32), "\x02"
                                                   "Fuse map*\r\nQP2*\r\nQV1*\r\nV0001 01*\r\n\x03"
                                                   "073D\r\n");
    EXPECT_FALSE(read_back(jedec_file({.vectors = {"01"}}, 32)).damaged());
}

TEST(jedec_file, numbers_all_rows_with_the_same_digits)
{
    const std::string text = jedec_file({.fuses = std::vector<std::uint8_t>(20000, 1), .default_fuse = true}, 10000);
    EXPECT_NE(text.find("\nF1*\r\nL00000 1"), std::string::npos);
    EXPECT_NE(text.find("\nL10000 1"), std::string::npos);
    EXPECT_FALSE(read_back(text).damaged());
}

TEST(jedec_file, is_read_back_as_it_was)
{
    std::mt19937 random{3};
    for (int run = 0; run < 100; ++run) {
        fuse_map map{.header = "run " + std::to_string(run), .default_fuse = run % 2 != 0, .pins = 1 + random() % 50};
        for (auto count = 1 + random() % 3000; count != 0; --count) map.fuses.push_back(random() % 2);
        for (auto count = random() % 12; count != 0; --count) {
            std::string& one = map.vectors.emplace_back();
            while (one.size() < *map.pins) one.push_back("01CKHLXZNFUDBP29"[random() % 16]);
        }
        if (run % 3 == 0) map.others = {{'N', "x\r\ny"}, {'G', "1"}, {'E', "0101"}, {'U', "HAB12"}};
        const auto held = read_back(jedec_file(map, 1 + random() % 100));
        ASSERT_EQ(texts_of(held), texts{});
        ASSERT_EQ(held.map.header, map.header);
        ASSERT_EQ(held.map.fuses, map.fuses);
        ASSERT_EQ(held.map.vectors, map.vectors);
        ASSERT_EQ(held.map.others, map.others);
        ASSERT_EQ(held.map.pins, map.pins);
        ASSERT_EQ(held.map.default_fuse, map.default_fuse);
        ASSERT_EQ(held.stated_fuse_sum, held.fuse_sum);
        ASSERT_EQ(held.stated_transmission, held.transmission_sum);
    }
}

}  // namespace
}  // namespace tamrix::tests
