#include "verify/verification.h"

#include <gtest/gtest.h>

using namespace tamrix;

TEST(verifiers, of_a_name_that_is_no_format_is_none)
{
    EXPECT_EQ(verifier_of("hex"), nullptr);
    EXPECT_EQ(verifier_of(""), nullptr);
}

TEST(verifiers, are_there_for_every_buffer_format)
{
    for (const char* name : {"binary", "intel", "motorola", "tektronix", "holtek", "emc", "intel16", "texas"}) {
        EXPECT_NE(verifier_of(name), nullptr) << name;
    }
}
