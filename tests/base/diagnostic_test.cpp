#include "base/diagnostic.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

TEST(diagnostic, tells_file_line_what_was_found_and_what_was_expected)
{
    const diagnostic why{.file = "boot.hex", .line = 217, .found = "record type 07", .expected = "00 to 05"};
    EXPECT_EQ(why.text(), "boot.hex:217: record type 07 where 00 to 05 was expected");
}

TEST(diagnostic, tells_the_offset_of_a_binary_file_in_hexadecimal)
{
    const diagnostic why{.file = "image.cds", .offset = 0x1F0, .found = "end of the file", .expected = "a header"};
    EXPECT_EQ(why.text(), "image.cds: offset 1F0: end of the file where a header was expected");
}

TEST(diagnostic, leaves_out_what_is_not_known)
{
    EXPECT_EQ((diagnostic{.file = "fuses.jed", .found = "no such file"}.text()), "fuses.jed: no such file");
    EXPECT_EQ((diagnostic{.found = "no such file"}.text()), "no such file");
    EXPECT_EQ((diagnostic{.offset = 0, .found = "a gap"}.text()), "offset 0: a gap");
}

TEST(diagnostic, is_empty_while_nothing_was_found)
{
    EXPECT_TRUE(diagnostic{}.empty());
    const diagnostic prepared{.file = "boot.hex", .line = 1};
    EXPECT_TRUE(prepared.empty());
    EXPECT_EQ(prepared.text(), "");
    EXPECT_FALSE(diagnostic{.found = "no such file"}.empty());
}

}  // namespace
}  // namespace tamrix
