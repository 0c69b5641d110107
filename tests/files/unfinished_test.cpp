// POSIX only: signals end programs there.
#include "files/unfinished.h"

#include "files/replace_file.h"
#include "support/temp_files.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace tamrix {
namespace {

namespace fs = std::filesystem;

constexpr int came_to_the_end = 7;

/// The end of a process that does `work`, as waitpid says it.
int end_of_process(const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        remove_unfinished_at_signals();
        work();
        ::_exit(came_to_the_end);
    }
    int state = 0;
    while (::waitpid(child, &state, 0) < 0 && errno == EINTR) {
    }
    return state;
}

void expect_ended_by(int signal, int state)
{
    ASSERT_TRUE(WIFSIGNALED(state)) << state;
    EXPECT_EQ(WTERMSIG(state), signal);
}

TEST(unfinished, what_is_held_goes_away_and_the_signal_ends_the_program)
{
    for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGPIPE}) {
        const tests::temp_folder folder;
        const std::string file = folder.write("half.bin", "half"), other = folder.write("other.bin", "whole");
        expect_ended_by(signal, end_of_process([&] {
                            unfinished held;
                            held.hold(file);
                            ::raise(signal);
                        }));
        EXPECT_FALSE(fs::exists(file));
        EXPECT_TRUE(fs::exists(other));
    }
}

TEST(unfinished, a_folder_goes_away_with_all_that_is_in_it)
{
    const tests::temp_folder folder;
    fs::create_directories(folder.path("work/deep/deeper"));
    for (int i = 0; i < 300; ++i) folder.write("work/a-file-with-a-long-name-" + std::to_string(i), "");
    folder.write("work/deep/deeper/file", "");
    fs::create_symlink(folder.write("elsewhere", "stays"), folder.path("work/link"));
    fs::create_directory(folder.path("linked"));
    folder.write("linked/file", "stays");
    fs::create_directory_symlink(folder.path("linked"), folder.path("work/link-to-a-folder"));
    expect_ended_by(SIGTERM, end_of_process([&] {
                        unfinished held;
                        held.hold(folder.path("work"));
                        ::raise(SIGTERM);
                    }));
    EXPECT_FALSE(fs::exists(folder.path("work")));
    EXPECT_TRUE(fs::exists(folder.path("elsewhere")));
    EXPECT_TRUE(fs::exists(folder.path("linked/file")));
}

TEST(unfinished, what_is_released_or_held_by_nobody_stays)
{
    const tests::temp_folder folder;
    const std::string released = folder.write("released", ""), gone = folder.write("gone", ""),
                      replaced = folder.write("replaced", ""), last = folder.write("last", "");
    expect_ended_by(SIGINT, end_of_process([&] {
                        unfinished one, another;
                        one.hold(released);
                        one.release();
                        {
                            unfinished short_lived;
                            short_lived.hold(gone);
                        }
                        another.hold(replaced);
                        another.hold(last);
                        ::raise(SIGINT);
                    }));
    EXPECT_TRUE(fs::exists(released));
    EXPECT_TRUE(fs::exists(gone));
    EXPECT_TRUE(fs::exists(replaced));
    EXPECT_FALSE(fs::exists(last));
}

TEST(unfinished, there_is_room_for_sixteen_names_again_and_again)
{
    const tests::temp_folder folder;
    std::vector<std::string> files;
    for (int i = 0; i < 17; ++i) files.push_back(folder.write(std::to_string(i), ""));
    expect_ended_by(SIGINT, end_of_process([&] {
                        std::vector<std::unique_ptr<unfinished>> held;
                        for (int time = 0; time < 3; ++time) {
                            held.clear();
                            for (const std::string& file : files)
                                held.emplace_back(std::make_unique<unfinished>())->hold(file);
                        }
                        ::raise(SIGINT);
                    }));
    for (std::size_t i = 0; i < 16; ++i) EXPECT_FALSE(fs::exists(files[i])) << i;
    EXPECT_TRUE(fs::exists(files[16]));
}

void raise_on_another_thread(int signal)
{
    std::thread{[signal] {
        sigset_t none;
        ::sigemptyset(&none);
        ::pthread_sigmask(SIG_SETMASK, &none, nullptr);
        ::raise(signal);
    }}.detach();
}

TEST(unfinished, a_signal_waits_until_what_is_being_made_is_held)
{
    for (const bool on_another_thread : {false, true}) {
        const tests::temp_folder folder;
        expect_ended_by(SIGTERM, end_of_process([&] {
                            unfinished held;
                            {
                                const ending_held until_registered;
                                if (on_another_thread) {
                                    raise_on_another_thread(SIGTERM);
                                } else {
                                    ::raise(SIGTERM);
                                }
                                std::this_thread::sleep_for(std::chrono::milliseconds{50});
                                {
                                    const ending_held one_more;
                                }
                                held.hold(folder.write("new.bin", "half"));
                            }
                            ::sleep(10);
                        }));
        EXPECT_FALSE(fs::exists(folder.path("new.bin"))) << on_another_thread;
    }
}

TEST(unfinished, an_ignored_signal_stays_ignored)
{
    const tests::temp_folder folder;
    const std::string file = folder.write("half.bin", "half");
    ::signal(SIGHUP, SIG_IGN);
    const int state = end_of_process([&] {
        unfinished held;
        held.hold(file);
        ::raise(SIGHUP);
    });
    ::signal(SIGHUP, SIG_DFL);
    EXPECT_TRUE(WIFEXITED(state) && WEXITSTATUS(state) == came_to_the_end) << state;
    EXPECT_TRUE(fs::exists(file));
}

TEST(unfinished, the_replacement_of_a_file_is_held_until_it_took_the_name)
{
    const tests::temp_folder folder;
    const std::string file = folder.write("target", "old");
    expect_ended_by(SIGINT, end_of_process([&] {
                        file_replacement half{file};
                        ::raise(SIGINT);
                    }));
    EXPECT_EQ(tests::read_text(file), "old");
    expect_ended_by(SIGINT, end_of_process([&] {
                        file_replacement whole{file};
                        whole.write({});
                        whole.take_place(file_replacement::lasts::killed_program);
                        ::raise(SIGINT);
                    }));
    EXPECT_EQ(tests::read_text(file), "");
    EXPECT_EQ(std::distance(fs::directory_iterator{folder.path("")}, {}), 1);
}

}  // namespace
}  // namespace tamrix
