// The name of a shared object that is gone at the end of its test.
#pragma once

#include "support/plug_in_fixture.h"
#include "support/shared_objects.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::tests {

struct named_memory_objects : testing::Test {
    const std::string prefix = fresh_name_space();
    const std::string name = prefix + "object";

    void TearDown() override { EXPECT_EQ(shared_objects(prefix), std::vector<std::string>{}); }
};

}  // namespace tamrix::tests
