// Runs a program as a process of its own and catches what it prints.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace tamrix::tests {

struct command_result {
    int status = -1;  // exit status; 128 + the signal where one ended it
    std::string out;
    std::string err;
    std::vector<std::string> left_in_shared_memory;  // objects that carry the process's number
};

struct command_setting {
    std::string folder{};                    // working folder; empty: that of the test
    std::vector<std::string> environment{};  // "NAME=VALUE" on top of the test's own
    bool without_rights_of_root = false;     // file permissions count, even where the tests run as root
    std::string standard_output{};           // a file that is opened for it instead of the catch
    std::string standard_error{};            // the same
    std::string standard_input{};            // what it reads there before the end; what a pipe holds, at most
};

/// What carries a process's number in shared memory.
std::vector<std::string> objects_of(pid_t process);

command_result run_program(const std::vector<std::string>& words, const command_setting& setting = {});

/// The `tamrix` command. Checks that it left nothing in shared memory.
command_result tamrix_command(const std::vector<std::string>& arguments, const command_setting& setting = {});

}  // namespace tamrix::tests
