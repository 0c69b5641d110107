// What a person is asked for a file's name.
#pragma once

#include <string>

namespace tamrix::forms {

struct file_question {
    std::string title{};
    /// Pairs of what is shown and the patterns, all parted by "|": "All Files (*.*)|*.*|Binary File (*.BIN)|*.bin".
    std::string filter{};
    /// The name to begin with, with its folder or without. One with "*" or "?" in it names no file and is not shown.
    std::string name{};

    bool operator==(const file_question&) const = default;
};

}  // namespace tamrix::forms
