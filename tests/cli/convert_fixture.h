// A folder with files, and `tamrix convert` run in it.
#pragma once

#include "cli/command_inside.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tamrix::tests {

class convert_test : public testing::Test {
protected:
    /// Inside the test, unless the data go through a standard stream.
    command_result convert(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "convert");
        if (std::ranges::count(arguments, "-") > 0) return tamrix_command(arguments, {.folder = folder.path("")});
        return command_inside(arguments, folder.path(""));
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
