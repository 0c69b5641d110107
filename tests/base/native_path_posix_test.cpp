// POSIX only: on Windows two separators at the start name a computer; tests/windows has that.
#include "base/native_path.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

TEST(native_path, collapses_two_separators_at_the_start_as_well)
{
    EXPECT_EQ(native_path(R"(\\server\share)"), "/server/share");
    EXPECT_EQ(native_path("//x"), "/x");
}

}  // namespace
}  // namespace tamrix
