// POSIX only: modes of new files, pipes.
#include "files/replace_file.h"

#include "files/file_io.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

TEST(replace_file, makes_a_file_that_is_not_there_yet_with_the_rights_of_any_new_file)
{
    const temp_folder files;
    const mode_t before = ::umask(0026);
    replace_file(files.path("new.txt"), "content");
    ::umask(before);
    EXPECT_EQ(read_text(files.path("new.txt")), "content");
    struct stat info {};
    ASSERT_EQ(::stat(files.path("new.txt").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{files.path("")}, {}), 1);
}

TEST(replace_file, makes_no_file_in_a_folder_that_is_not_there)
{
    const temp_folder files;
    const std::string file = files.path("none/new.txt");
    try {
        replace_file(file, "content");
        ADD_FAILURE() << "nothing was refused";
    } catch (const file_error& error) {
        EXPECT_EQ(error.what(), file + ": no such file");
    }
}

TEST(replace_file, writes_to_a_pipe_and_leaves_it_one)
{
    const temp_folder files;
    const std::string pipe = files.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int reader = ::open(pipe.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    replace_file(pipe, "content");
    char came[16] = {};
    EXPECT_EQ(::read(reader, came, sizeof came), 7);
    EXPECT_STREQ(came, "content");
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    ::close(reader);
}

TEST(file_replacement, without_its_last_step_leaves_the_old_content_and_nothing_else)
{
    const temp_folder files;
    const std::string old = files.write("old.bin", std::string_view{"old"});
    {
        file_replacement fresh{old};
        const std::vector<std::uint8_t> much(3'000'000, 7);
        fresh.write(much);
        EXPECT_EQ(read_text(old), "old");
        file_replacement other{files.path("new.bin")};
        other.write(much);
    }
    EXPECT_EQ(read_text(old), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{files.path("")}, {}), 1);
}

TEST(file_replacement, takes_what_comes_in_pieces)
{
    const temp_folder files;
    file_replacement fresh{files.path("new.bin")};
    std::string expected;
    for (int i = 0; i < 100; ++i) {
        const std::string piece(static_cast<std::size_t>(i * 37), static_cast<char>('a' + i % 26));
        fresh.write({reinterpret_cast<const std::uint8_t*>(piece.data()), piece.size()});
        expected += piece;
    }
    fresh.take_place(file_replacement::lasts::killed_program);
    EXPECT_EQ(read_text(files.path("new.bin")), expected);
}

TEST(file_replacement, of_a_full_device_fails_by_its_own_name)
{
    file_replacement full{"/dev/full"};
    const std::vector<std::uint8_t> much(3'000'000, 7);
    try {
        full.write(much);
        ADD_FAILURE() << "the device took it";
    } catch (const file_error& error) {
        EXPECT_EQ(error.what(), std::string{"/dev/full: No space left on device"});
    }
}

}  // namespace
}  // namespace tamrix::tests
