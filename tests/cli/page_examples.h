// The examples on the pages of docs/: commands after "$ ", and below each what it prints, all indented by four blanks.
#pragma once

#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tamrix::tests {

inline const std::string pages_folder = TAMRIX_SAMPLES "/../../docs/";

/// Each command with what the page says that it prints. `page`: the name of a file in docs/.
inline std::vector<std::pair<std::string, std::string>> examples_of_page(const std::string& page)
{
    const std::string indent = "    ", prompt = indent + "$ ";
    std::vector<std::pair<std::string, std::string>> examples;
    std::istringstream text{read_text(pages_folder + page)};
    bool inside = false;
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with(prompt)) {
            examples.emplace_back(line.substr(prompt.size()), "");
            inside = true;
        } else if (inside && line.starts_with(indent)) {
            examples.back().second += line.substr(indent.size()) + "\n";
        } else {
            inside = false;
        }
    }
    return examples;
}

/// Runs them one after another in a folder of their own. `picture`: a file that they make, which the page shows as
/// images/NAME; none if empty.
inline void expect_real_examples(const std::string& page, std::size_t count, const std::string& picture = {})
{
    const temp_folder folder;
    const auto examples = examples_of_page(page);
    EXPECT_EQ(examples.size(), count);
    for (const auto& [command, printed] : examples) {
        std::string real = command;
        real.replace(real.find("tamrix"), std::string{"tamrix"}.size(), TAMRIX_COMMAND);
        const command_setting there{.folder = folder.path(""), .environment = {"LC_ALL=C.UTF-8"}};
        EXPECT_EQ(run_program({"sh", "-c", real}, there).out, printed) << command;
    }
    if (picture.empty()) return;
    const std::string shown = pages_folder + "images/" + picture, made = read_text(folder.path(picture));
    if (std::getenv("TAMRIX_WRITE_PAGES") != nullptr) std::ofstream{shown} << made;
    EXPECT_EQ(read_text(shown), made) << "write it anew with TAMRIX_WRITE_PAGES=1";
}

}  // namespace tamrix::tests
