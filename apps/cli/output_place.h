// Where a command writes its data: a file that is replaced in one step, or standard output.
#pragma once

#include "cli/console.h"
#include "cli/standard_streams.h"
#include "files/replace_file.h"

#include <memory>
#include <string>

namespace tamrix::cli {

class output_place {
public:
    /// "-" is standard output. Throws command_error where the file cannot be made.
    explicit output_place(const std::string& word);

    byte_target& target() { return file_ != nullptr ? static_cast<byte_target&>(*file_) : standard_; }
    /// "standard output" for that.
    const std::string& name() const { return name_; }
    /// To be called after the last byte; without it the old content stays. Throws file_error.
    void finish()
    {
        if (file_ != nullptr) file_->take_place(file_replacement::lasts::killed_program);
    }

private:
    std::string name_;
    standard_output standard_;
    std::unique_ptr<file_replacement> file_;
};

}  // namespace tamrix::cli
