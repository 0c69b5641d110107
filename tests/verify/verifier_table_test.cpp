#include "verify/verification.h"

#include <gtest/gtest.h>

using namespace tamrix;

TEST(verifiers, of_a_name_that_is_no_format_is_none)
{
    EXPECT_EQ(verifier_of("hex"), nullptr);
    EXPECT_EQ(verifier_of(""), nullptr);
}
