// POSIX only: owners, modes and links of the library's file.
#include "files/file_io.h"
#include "files/replace_file.h"
#include "ttl/library/library.h"
#include "ttl/ttl_fixture.h"

#include <gtest/gtest.h>

#include <functional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

TEST(save_library, keeps_mode_and_links_and_leaves_no_other_file)
{
    temp_folder files;
    const std::string file = files.write("test.lib", "old");
    ::chmod(file.c_str(), 0640);
    std::filesystem::create_symlink("test.lib", files.path("link.lib"));
    replace_file(files.path("link.lib"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(files.path("link.lib")));
    EXPECT_EQ(read_text(file), "new");
    struct stat info {};
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{files.path("")}, {}), 2);
}

/// Runs `body` as somebody who owns nothing; true where it yields true.
bool as_nobody(const std::function<bool()>& body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && ::setresuid(nobody, nobody, nobody) != 0) ::_exit(2);
        bool good = false;
        try {
            good = body();
        } catch (...) {
        }
        ::_exit(good ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status == 0;
}

TEST(save_library, writes_in_place_where_the_folder_takes_no_file)
{
    temp_folder files;
    const std::string file = files.write("test.lib", "a longer old text");
    ::chmod(file.c_str(), 0666);
    ::chmod(files.path("").c_str(), 0555);
    EXPECT_TRUE(as_nobody([&] {
        replace_file(file, "new");
        return true;
    }));
    ::chmod(files.path("").c_str(), 0755);
    EXPECT_EQ(read_text(file), "new");
}

TEST(save_library, does_not_replace_a_file_that_may_not_be_written)
{
    temp_folder files;
    const std::string file = files.write("test.lib", "old");
    ::chmod(file.c_str(), 0444);
    ::chmod(files.path("").c_str(), 0777);
    EXPECT_TRUE(as_nobody([&] {
        try {
            replace_file(file, "new");
        } catch (const file_error& error) {
            return std::string{error.what()}.find("permission denied") != std::string::npos;
        }
        return false;
    }));
    EXPECT_EQ(read_text(file), "old");
}

TEST(read_directory, of_a_library_that_may_only_be_read_works)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    ::chmod(f.library_file().c_str(), 0444);
    ::chmod(f.files.path("").c_str(), 0755);
    EXPECT_TRUE(as_nobody([&] { return read_directory(f.session).count == 2; }));
}

}  // namespace
}  // namespace tamrix::tests
