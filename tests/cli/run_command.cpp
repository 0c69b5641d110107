#include "cli/run_command.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <linux/capability.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {

namespace {

struct stream {
    int reading = -1, writing = -1;
    stream()
    {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error{"no pipe"};
        reading = ends[0];
        writing = ends[1];
    }
};

[[noreturn]] void become(const std::vector<std::string>& words, const command_setting& setting, int in, int out,
                         int err)
{
    constexpr int cannot_start = 127;
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    if (!setting.standard_output.empty()) out = ::open(setting.standard_output.c_str(), O_WRONLY);
    if (!setting.standard_error.empty()) err = ::open(setting.standard_error.c_str(), O_WRONLY | O_NOCTTY);
    ::dup2(in, STDIN_FILENO);
    ::dup2(out, STDOUT_FILENO);
    ::dup2(err, STDERR_FILENO);
    if (!setting.folder.empty() && ::chdir(setting.folder.c_str()) != 0) ::_exit(cannot_start);
    for (const std::string& line : setting.environment) ::putenv(const_cast<char*>(line.c_str()));
    if (setting.without_rights_of_root && ::geteuid() == 0) {
        ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0);
        ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0);
    }
    ::execvp(arguments[0], arguments.data());
    ::_exit(cannot_start);
}

/// Reads both streams until the program closed them.
void catch_streams(const stream& out, const stream& err, command_result& result)
{
    std::array<pollfd, 2> waiting{{{out.reading, POLLIN, 0}, {err.reading, POLLIN, 0}}};
    std::array<std::string*, 2> texts{&result.out, &result.err};
    std::array<char, 4096> part{};
    while (waiting[0].fd >= 0 || waiting[1].fd >= 0) {
        if (::poll(waiting.data(), waiting.size(), -1) < 0) continue;
        for (std::size_t i = 0; i < waiting.size(); ++i) {
            if (waiting[i].fd < 0 || waiting[i].revents == 0) continue;
            const auto count = ::read(waiting[i].fd, part.data(), part.size());
            if (count > 0) texts[i]->append(part.data(), static_cast<std::size_t>(count));
            if (count == 0) waiting[i].fd = -1;
        }
    }
}

}  // namespace

std::vector<std::string> objects_of(pid_t process)
{
    std::vector<std::string> names;
    const std::string start = "cli-" + std::to_string(process) + "-";
    for (const auto& entry : std::filesystem::directory_iterator{"/dev/shm"}) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with(start)) names.push_back(name);
    }
    return names;
}

command_result run_program(const std::vector<std::string>& words, const command_setting& setting)
{
    const stream in, out, err;
    const auto input_bytes = static_cast<ssize_t>(setting.standard_input.size());
    if (::write(in.writing, setting.standard_input.data(), setting.standard_input.size()) != input_bytes)
        throw std::runtime_error{"no input"};
    ::close(in.writing);
    const pid_t child = ::fork();
    if (child == 0) become(words, setting, in.reading, out.writing, err.writing);
    ::close(in.reading);
    ::close(out.writing);
    ::close(err.writing);
    command_result result;
    catch_streams(out, err, result);
    ::close(out.reading);
    ::close(err.reading);
    int state = 0;
    while (::waitpid(child, &state, 0) < 0 && errno == EINTR) {
    }
    result.status = WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
    result.left_in_shared_memory = objects_of(child);
    return result;
}

command_result tamrix_command(const std::vector<std::string>& arguments, const command_setting& setting)
{
    std::vector<std::string> words{TAMRIX_COMMAND};
    words.insert(words.end(), arguments.begin(), arguments.end());
    command_result result = run_program(words, setting);
    EXPECT_TRUE(result.left_in_shared_memory.empty()) << result.left_in_shared_memory.size() << " objects were left";
    return result;
}

}  // namespace tamrix::tests
