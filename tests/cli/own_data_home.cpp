// No test changes the libraries of the person who runs it.
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <memory>

#include <stdlib.h>

namespace tamrix::tests {
namespace {

class own_data_home : public testing::Environment {
public:
    void SetUp() override
    {
        folder_ = std::make_unique<temp_folder>();
        ::setenv("XDG_DATA_HOME", folder_->path("").c_str(), 1);
    }
    void TearDown() override { folder_.reset(); }

private:
    std::unique_ptr<temp_folder> folder_;
};

const testing::Environment* const added = testing::AddGlobalTestEnvironment(new own_data_home);

}  // namespace
}  // namespace tamrix::tests
