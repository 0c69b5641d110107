#include "workbench/difference_words.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using editing::difference;
using editing::different_place;
using workbench::difference_words;
using workbench::place_words;

TEST(difference_words, say_how_many_bytes_differ_and_which_only_one_has)
{
    EXPECT_EQ(difference_words({}), "No byte differs");
    EXPECT_EQ(difference_words({.different_bytes = 1, .different_places = 1}), "1 byte differs at 1 place");
    EXPECT_EQ(difference_words({.different_bytes = 12, .different_places = 3, .only_in_file = 4}),
              "12 bytes differ at 3 places; 4 bytes only in the file");
    EXPECT_EQ(difference_words({.only_in_buffer = 1, .only_in_file = 5, .above = 2}),
              "No byte differs; 1 byte only in the buffer; 5 bytes only in the file, 2 bytes of them not shown, from "
              "0x100000000 on");
}

TEST(difference_words, say_what_a_place_is)
{
    EXPECT_EQ(place_words(different_place{{0x10, 16}, difference::bytes_differ}), "0x10 to 0x1F: 16 bytes differ");
    EXPECT_EQ(place_words(different_place{{5, 1}, difference::bytes_differ}), "0x5: 1 byte differs");
    EXPECT_EQ(place_words(different_place{{5, 1}, difference::only_in_file}), "0x5: 1 byte only in the file");
    EXPECT_EQ(place_words(different_place{{0, 2}, difference::only_in_buffer}),
              "0x0 to 0x1: 2 bytes only in the buffer");
    EXPECT_EQ(place_words({}), "No other difference there");
}

}  // namespace
}  // namespace tamrix::tests
