// Files that cannot be read, and files that nobody expects: a status and a reason each, never a crash or a hang.
// POSIX only: pipes and rights; tests/windows has the like.
#include "files/file_io.h"
#include "load_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

struct bad_input : testing::TestWithParam<int> {
    status read(const std::string& path, int clear = 2) { return f.load(path, {.format = GetParam(), .clear = clear}); }
    std::string why() const { return f.variables.transfer.why_it_failed.text(); }
    void expect_quiet_failure(const std::string& reason)
    {
        EXPECT_EQ(why(), reason);
        EXPECT_EQ(f.status_text(), ">>Load File Fail!\n>> 0.00Sec\n");
        EXPECT_TRUE(f.shell.boxes().empty());
        EXPECT_FALSE(f.stayed_open);
        EXPECT_TRUE(f.last_reply.ok());
        EXPECT_TRUE(f.buffer_untouched());
    }

    temp_folder files;
    load_fixture f;
};

INSTANTIATE_TEST_SUITE_P(binary_and_intel, bad_input, testing::Values(0, 1),
                         [](const auto& one) { return one.param == 0 ? "binary" : "intel"; });

TEST_P(bad_input, a_missing_file_fails_quietly)
{
    const std::string path = files.path("missing.bin");
    EXPECT_EQ(read(path), status::failed);
    expect_quiet_failure(path + ": no such file");
}

TEST_P(bad_input, a_directory_fails_quietly)
{
    const std::string path = files.path("");
    EXPECT_EQ(read(path), status::failed);
    expect_quiet_failure(path + ": a directory where a file was expected");
}

TEST_P(bad_input, a_named_pipe_fails_quietly_and_does_not_hang)
{
    const std::string path = files.path("pipe");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(read(path), status::failed);
    expect_quiet_failure(path + ": a device where a file was expected");
}

/// The test may run as root, to whom every file is readable; a child process without rights does the load.
TEST_P(bad_input, an_unreadable_file_fails_quietly)
{
    const std::string path = files.write("secret.bin", "abc");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        const bool harmless = ::geteuid() != 0 || ::seteuid(nobody) == 0;
        const bool right = harmless && read(path) == status::failed && why() == path + ": permission denied";
        ::_exit(right ? 0 : 1);
    }
    int result = -1;
    ASSERT_EQ(::waitpid(child, &result, 0), child);
    EXPECT_EQ(result, 0);
}

TEST_P(bad_input, an_empty_file_is_a_success_that_loads_nothing)
{
    EXPECT_EQ(read(files.write("empty", "")), status::done);
    EXPECT_TRUE(f.buffer_untouched());
}

TEST_P(bad_input, blanks_and_foreign_letters_in_a_path_are_no_obstacle)
{
    const std::string content = GetParam() == 0 ? "\x11" : ":0100000011EE\n";
    EXPECT_EQ(read(files.write("Prüf datei – 测试 (1).hex", content)), status::done);
    EXPECT_EQ(f.buffer(0), 0x11);
}

TEST_P(bad_input, backslashes_separate_folders_too)
{
    std::string path = files.write("a.bin", GetParam() == 0 ? "\x11" : ":0100000011EE\n");
    std::ranges::replace(path, '/', '\\');
    EXPECT_EQ(read(path), status::done);
    EXPECT_EQ(f.buffer(0), 0x11);
}

TEST_P(bad_input, a_gigabyte_of_zeros_loads_without_harm)
{
    const std::string path = files.write("zeros", "");
    std::filesystem::resize_file(path, std::uintmax_t{1} << 30);
    EXPECT_EQ(read(path), status::done);
    EXPECT_EQ(f.buffer(0), GetParam() == 0 ? 0 : plug_in_fixture::untouched);
    EXPECT_EQ(f.buffer(0x1001), plug_in_fixture::untouched);
}

}  // namespace
}  // namespace tamrix::tests
