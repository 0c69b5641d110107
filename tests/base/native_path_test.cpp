#include "base/native_path.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

TEST(native_path, takes_both_separators)
{
    EXPECT_EQ(native_path(R"(lib1\test190.lib)"), "lib1/test190.lib");
    EXPECT_EQ(native_path("lib1/test190.lib"), "lib1/test190.lib");
    EXPECT_EQ(native_path(R"(\home/user\a b\x.hex)"), "/home/user/a b/x.hex");
}

TEST(native_path, collapses_repeated_separators)
{
    EXPECT_EQ(native_path(R"(/data\\//x.hex)"), "/data/x.hex");
    EXPECT_EQ(native_path(R"(\\\server\share)"), "/server/share");
    EXPECT_EQ(native_path("folder//"), "folder/");
}

TEST(native_path, leaves_everything_else_as_it_stands)
{
    EXPECT_EQ(native_path(""), "");
    EXPECT_EQ(native_path("."), ".");
    EXPECT_EQ(native_path(" ../Größe 10 µF.bin "), " ../Größe 10 µF.bin ");
}

}  // namespace
}  // namespace tamrix
