// The question to a person for the name of a file.
#pragma once

#include <string>

namespace tamrix::forms {

struct file_question {
    std::string title{};
    /// UTF-8. Pairs of a shown text and its patterns, all separated by "|": "All Files (*.*)|*.*|Binary File
    /// (*.BIN)|*.bin".
    std::string filter{};
    /// The name to begin with, with its folder or without. One with "*" or "?" in it names no file and is not shown.
    std::string name{};

    bool operator==(const file_question&) const = default;
};

}  // namespace tamrix::forms
