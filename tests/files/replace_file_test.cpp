// POSIX only: modes of new files, pipes.
#include "files/replace_file.h"

#include "files/file_io.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

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

}  // namespace
}  // namespace tamrix::tests
