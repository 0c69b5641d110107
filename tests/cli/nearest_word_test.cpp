#include "cli/nearest_word.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::cli {

TEST(nearest_word, letters_that_are_added_left_out_changed_or_swapped_are_counted)
{
    EXPECT_EQ(letters_apart("convert", "convert"), 0);
    EXPECT_EQ(letters_apart("covert", "convert"), 1);
    EXPECT_EQ(letters_apart("connvert", "convert"), 1);
    EXPECT_EQ(letters_apart("cinvert", "convert"), 1);
    EXPECT_EQ(letters_apart("ocnvert", "convert"), 1);
    EXPECT_EQ(letters_apart("from-fiel", "from-file"), 1);
    EXPECT_EQ(letters_apart("CONVERT", "convert"), 0);
    EXPECT_EQ(letters_apart("abcdef", "badcfe"), 3);
    EXPECT_EQ(letters_apart("", "ttl"), 3);
    EXPECT_EQ(letters_apart("ttl", ""), 3);
    EXPECT_EQ(letters_apart("", ""), 0);
}

TEST(nearest_word, is_the_nearest_and_of_equals_the_first)
{
    const std::vector<std::string> known{"svf", "convert", "covers", "cat", "car"};
    EXPECT_EQ(nearest_word("covert", known), "convert");
    EXPECT_EQ(nearest_word("cover", known), "covers");
    EXPECT_EQ(nearest_word("cap", known), "cat");
}

TEST(nearest_word, is_none_where_nothing_is_near)
{
    const std::vector<std::string> known{"convert", "tour", "svf"};
    EXPECT_EQ(nearest_word("burn", known), std::nullopt);
    EXPECT_EQ(nearest_word("to", known), std::nullopt) << "two of two letters are no third";
    EXPECT_EQ(nearest_word("invrt", known), std::nullopt);
    EXPECT_EQ(nearest_word("", known), std::nullopt);
    EXPECT_EQ(nearest_word("convert", {}), std::nullopt);
    EXPECT_EQ(nearest_word(std::string(1000000, 'c'), known), std::nullopt);
}

}  // namespace tamrix::cli
