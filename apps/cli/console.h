// The output of the command: results to standard output, errors and notes to standard error.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tamrix::cli {

enum exit_status : int { exit_done = 0, exit_failed = 1, exit_wrong_usage = 2, exit_not_carried_out = 3 };

/// What ends a command: a text for the person, and the exit status.
class command_error : public std::runtime_error {
public:
    command_error(exit_status status, const std::string& text) : std::runtime_error{text}, status_{status} {}
    exit_status status() const { return status_; }

private:
    exit_status status_;
};

[[noreturn]] inline void fail(const std::string& text) { throw command_error{exit_failed, text}; }
[[noreturn]] inline void refuse(const std::string& text) { throw command_error{exit_wrong_usage, text}; }

class console {
public:
    /// Errors and notes get a colour where `err` is a terminal that has colours and the person wants them.
    explicit console(std::FILE* out = stdout, std::FILE* err = stderr);

    /// From now on there are no status texts and no notes.
    void be_quiet() { quiet_ = true; }

    /// Prints the text unchanged.
    void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), out_); }
    /// Prints one fact on a line of its own.
    void line(std::string_view text)
    {
        print(text);
        print("\n");
    }
    /// Says on a line of its own how something went; on standard error where data go to standard output.
    void status(std::string_view text)
    {
        if (quiet_) return;
        if (!data_on_output_) return line(text);
        tell("", "", text);
    }
    /// The same for lines that end with the end of a line.
    void status_lines(std::string_view text)
    {
        if (text.ends_with('\n')) text.remove_suffix(1);
        if (!text.empty()) status(text);
    }
    void data_on_output() { data_on_output_ = true; }
    void error(std::string_view text) { tell("tamrix: ", red, text); }
    void note(std::string_view text)
    {
        if (!quiet_) tell("tamrix: note: ", yellow, text);
    }

    /// Throws command_error if the system could not write everything.
    void finish()
    {
        if (std::fflush(out_) != 0 || std::ferror(out_) != 0) fail("standard output: cannot be written");
    }

private:
    static constexpr const char *red = "\x1B[31m", *yellow = "\x1B[33m", *usual = "\x1B[0m";

    void tell(std::string_view before, const char* colour, std::string_view text);

    std::FILE* out_;
    std::FILE* err_;
    bool colours_, data_on_output_ = false, quiet_ = false;
};

}  // namespace tamrix::cli
