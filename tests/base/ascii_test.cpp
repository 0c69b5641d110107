#include "base/ascii.h"

#include <gtest/gtest.h>

namespace tamrix::ascii {
namespace {

TEST(ascii_text, capitals_become_small_and_all_else_stays)
{
    EXPECT_EQ(lowered("@AZ[`az{09 \xC3\x84"), "@az[`az{09 \xC3\x84");
}

TEST(ascii_text, is_trimmed_at_its_ends_only)
{
    EXPECT_EQ(trimmed(" \t a \t b\r "), "a \t b");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed(" \t\r"), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(ascii_text, is_trimmed_of_the_blanks_that_are_named) { EXPECT_EQ(trimmed(" \ta \t", " "), "\ta \t"); }

}  // namespace
}  // namespace tamrix::ascii
