// A folder with files, and `tamrix convert` run in it.
#pragma once

#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::tests {

class convert_test : public testing::Test {
protected:
    command_result convert(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "convert");
        return tamrix_command(arguments, {.folder = folder.path("")});
    }

    /// The content of OUT after a conversion that must succeed without a word on standard error.
    std::string converted(const std::string& in, const std::string& out, const std::vector<std::string>& options = {})
    {
        std::vector<std::string> arguments{in, out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto result = convert(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        return read_text(folder.path(out));
    }

    bool exists(const std::string& name) const { return std::filesystem::exists(folder.path(name)); }

    const temp_folder folder;
};

inline std::string bytes(std::initializer_list<int> values)
{
    std::string text;
    for (const int value : values) text.push_back(static_cast<char>(value));
    return text;
}

}  // namespace tamrix::tests
