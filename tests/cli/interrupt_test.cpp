// Commands that a signal ends at a random moment.
#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <set>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

namespace fs = std::filesystem;
using std::chrono::microseconds;

/// A command that changes `target`, in a folder of its own.
struct job {
    std::vector<std::string> words;
    std::string target;  // empty: none
};

class interrupted : public testing::Test {
protected:
    interrupted()
    {
        fs::create_directory(folder.path("tmp"));
        fs::copy(TAMRIX_SAMPLES "/../lib", folder.path("lib"));
        folder.write("rows.txt", "0H0H0HGH0H0H0V\n");
        folder.write("signals.bin", std::string(65536, 'a'));
        folder.write("record.bin", "old");
        folder.write("draw.svg", "old");
        folder.write("convert.hex", "old");
        folder.write("calls.txt", "old");
    }

    pid_t start(const job& one) const
    {
        const pid_t child = ::fork();
        if (child != 0) return child;
        std::vector<char*> words{const_cast<char*>(TAMRIX_COMMAND)};
        for (const std::string& word : one.words) words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nowhere, stream);
        ::setenv("TMPDIR", folder.path("tmp").c_str(), 1);
        if (::chdir(folder.path("").c_str()) == 0) ::execv(words[0], words.data());
        ::_exit(127);
    }

    /// How it ended, as waitpid says it.
    static int end_of(pid_t child)
    {
        int state = 0;
        while (::waitpid(child, &state, 0) < 0 && errno == EINTR) {
        }
        return state;
    }

    std::set<std::string> everything() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator{folder.path("")}) names.insert(entry.path().string());
        return names;
    }

    std::string content(const job& one) const { return one.target.empty() ? "" : read_text(folder.path(one.target)); }

    static std::vector<std::string> left_in_shared_memory(pid_t process)
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator{"/dev/shm"}) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with("cli-" + std::to_string(process) + "-")) names.push_back(name);
        }
        return names;
    }

    const temp_folder folder;
};

TEST_F(interrupted, a_command_leaves_nothing_and_the_old_target_or_the_new_one_a_hundred_times)
{
    const job jobs[] = {
        {{"ttl", "add", "MINE", "14", "rows.txt", "--syspath", "."}, "lib/test.lib"},
        {{"analyze", "record", "-o", "record.bin", "--banks", "2", "--signal", "P21 square 1000"}, "record.bin"},
        {{"analyze", "draw", "signals.bin", "-o", "draw.svg", "--samples", "60000"}, "draw.svg"},
        {{"wave", "generate", "60000", "--route", "devobj", "--transcript", "calls.txt"}, "calls.txt"},
        {{"convert", "signals.bin", "convert.hex"}, "convert.hex"},
        {{"tour"}, ""},
    };
    std::mt19937 chance{15};
    int by_signal = 0, whole = 0;
    for (int run = 0; run < 100; ++run) {
        const job& one = jobs[static_cast<std::size_t>(run) % std::size(jobs)];
        const auto names_before = everything();
        const std::string before = content(one);
        // How long it takes here, and what the target is then; the old one comes back for the run that is ended.
        const auto began = std::chrono::steady_clock::now();
        EXPECT_EQ(end_of(start(one)), 0);
        const auto lasts = std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - began);
        const std::string after = content(one);
        if (!one.target.empty()) folder.write(one.target, before);

        const pid_t child = start(one);
        std::this_thread::sleep_for(microseconds{std::uniform_int_distribution<long>{0, lasts.count()}(chance)});
        const int signal = run % 2 == 0 ? SIGINT : SIGTERM;
        ::kill(child, signal);
        const int state = end_of(child);
        ASSERT_TRUE(state == 0 || (WIFSIGNALED(state) && WTERMSIG(state) == signal)) << state;
        (state == 0 ? whole : by_signal) += 1;
        EXPECT_EQ(everything(), names_before) << one.words[0] << " " << run;
        EXPECT_THAT(left_in_shared_memory(child), testing::IsEmpty()) << one.words[0] << " " << run;
        const std::string now = content(one);
        EXPECT_TRUE(now == before || now == after) << one.words[0] << " " << run;
        if (!one.target.empty()) folder.write(one.target, before);
    }
    EXPECT_GT(by_signal, 50) << whole << " runs ended before the signal";
}

TEST_F(interrupted, a_shell_sees_the_signal)
{
    const auto result = run_program({"sh", "-c",
                                     "(sleep 0.3; kill -INT $$) & exec " TAMRIX_COMMAND
                                     " analyze record -o record.bin --route devobj --trigger ext --wait 1000"},
                                    {.folder = folder.path("")});
    EXPECT_EQ(result.status, 130);
    EXPECT_EQ(read_text(folder.path("record.bin")), "old");
}

}  // namespace
}  // namespace tamrix::tests
