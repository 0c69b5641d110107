// POSIX only: it forks and locks files. What killed saves of a library leave beside it, and saves at the same time.
#include "files/replace_file.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

struct replace_file_leftovers : testing::Test {
    bool is_there(const std::string& name) const
    {
        return std::filesystem::exists(std::filesystem::symlink_status(files.path(name)));
    }
    std::ptrdiff_t count() const { return std::distance(std::filesystem::directory_iterator{files.path("")}, {}); }

    temp_folder files;
    std::string file = files.write("test.lib", "old");
};

TEST_F(replace_file_leftovers, go_away_with_the_next_save)
{
    files.write("test.lib.saving-aB3xY9", "ha");
    files.write("test.lib.saving-000000", "");
    replace_file(file, "new");
    EXPECT_EQ(read_text(file), "new");
    EXPECT_EQ(count(), 1);
}

TEST_F(replace_file_leftovers, go_away_with_a_save_through_a_link_from_another_folder)
{
    files.write("test.lib.saving-aB3xY9", "ha");
    std::filesystem::create_directory(files.path("links"));
    std::filesystem::create_symlink("../test.lib", files.path("links/my.lib"));
    const std::string other = files.write("links/my.lib.saving-aB3xY9", "not of this library");
    replace_file(files.path("links/my.lib"), "new");
    EXPECT_FALSE(is_there("test.lib.saving-aB3xY9"));
    EXPECT_EQ(read_text(other), "not of this library");
}

TEST_F(replace_file_leftovers, with_names_of_another_kind_stay)
{
    const std::vector<std::string> others{
        "test.lib.backup",         "test.lib.aB3xY9",           "test.lib.saving-aB3xY",
        "test.lib.saving-aB3xY9z", "test.lib.saving-aB3.Y9",    "other.lib.saving-aB3xY9",
        "atest.lib.saving-aB3xY9", "test.lib.saving-aB3xY\xC3", "Test.lib.saving-aB3xY9"};
    for (const std::string& name : others) files.write(name, "mine");
    replace_file(file, "new");
    for (const std::string& name : others) EXPECT_EQ(read_text(files.path(name)), "mine") << name;
}

TEST_F(replace_file_leftovers, that_are_no_files_stay)
{
    const std::string target = files.write("target", "mine");
    std::filesystem::create_directory(files.path("test.lib.saving-folder"));
    std::filesystem::create_symlink("target", files.path("test.lib.saving-link00"));
    std::filesystem::create_symlink("nowhere", files.path("test.lib.saving-link01"));
    ASSERT_EQ(::mkfifo(files.path("test.lib.saving-pipe00").c_str(), 0600), 0);
    replace_file(file, "new");
    for (const char* name : {"folder", "link00", "link01", "pipe00"})
        EXPECT_TRUE(is_there(std::string{"test.lib.saving-"} + name)) << name;
    EXPECT_EQ(read_text(target), "mine");
}

TEST_F(replace_file_leftovers, stay_as_long_as_somebody_holds_them)
{
    const std::string held = files.write("test.lib.saving-aB3xY9", "ha");
    const int other = ::open(held.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    replace_file(file, "new");
    EXPECT_EQ(read_text(held), "ha");
    ::close(other);
    replace_file(file, "newer");
    EXPECT_EQ(count(), 1);
}

/// Saves text of one letter many times; 0 where all went well.
int save_often(const std::string& file, char letter, std::size_t length)
{
    try {
        for (int i = 0; i < 500; ++i) replace_file(file, std::string(length, letter));
    } catch (...) {
        return 1;
    }
    return 0;
}

// A save that lost its new file to the other one would write in place, where the reader sees it half done.
TEST_F(replace_file_leftovers, are_never_the_files_of_saves_at_the_same_time)
{
    constexpr std::size_t length = 20000;
    files.write("test.lib", std::string(length, 'x'));
    std::vector<pid_t> running;
    for (const char letter : {'a', 'b', 'c'}) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) ::_exit(save_often(file, letter, length));
        running.push_back(child);
    }
    while (!running.empty()) {
        const std::string now = read_text(file);
        EXPECT_EQ(now.size(), length);
        EXPECT_EQ(now.find_first_not_of(now.substr(0, 1)), std::string::npos);
        int status = 0;
        if (::waitpid(running.back(), &status, WNOHANG) == 0) continue;
        EXPECT_EQ(status, 0);
        running.pop_back();
    }
    EXPECT_EQ(count(), 1);
}

}  // namespace
}  // namespace tamrix::tests
