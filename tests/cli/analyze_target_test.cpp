// tamrix analyze record: files that cannot be written, and a person who ends it.
#include "cli/analyze_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;

TEST(analyze_record, a_target_that_cannot_be_written_is_a_failure)
{
    const temp_folder folder;
    const std::pair<std::string, std::string> all[] = {
        {folder.path("none/capture.bin"), "the folder " + folder.path("none") + " does not exist"},
        {folder.path(""), "a directory where a file was expected"},
        {"/dev/full", "No space left on device"},
    };
    for (const auto& [file, why] : all) {
        const auto result = record_inside(file);
        EXPECT_EQ(result.status, 1) << file;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "tamrix: " + file + ": " + why + "\n");
    }
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    const std::string file = folder.write("mine.bin", "old");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    const auto result = tamrix_command({"analyze", "record", "-o", file}, {.without_rights_of_root = true});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: " + file + ": permission denied\n");
    EXPECT_EQ(read_text(file), "old");
}

/// A limit on the length of files takes the place of a full disk.
TEST(analyze_record, a_disk_that_gets_full_leaves_the_old_file_and_no_other)
{
    const temp_folder folder;
    const std::string file = folder.write("old.bin", "old");
    const auto result =
        run_program({"sh", "-c", "trap '' XFSZ; ulimit -f 64; exec " TAMRIX_COMMAND " analyze record -o old.bin"},
                    {.folder = folder.path(""), .environment = {"TMPDIR=/dev/shm"}});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr(": File too large"));
    EXPECT_EQ(read_text(file), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{folder.path("")}, {}), 1);
}

TEST(analyze_record, ctrl_c_leaves_the_old_file_and_nothing_in_shared_memory)
{
    const temp_folder folder;
    const std::string file = folder.write("old.bin", "old");
    const auto result = run_program({"sh", "-c",
                                     "(sleep 0.5; kill -INT $$) & exec " TAMRIX_COMMAND
                                     " analyze record -o old.bin --route devobj --trigger ext --wait 1000"},
                                    {.folder = folder.path(""), .environment = {"TMPDIR=" + folder.path("")}});
    EXPECT_EQ(result.status, 128 + SIGINT);
    EXPECT_EQ(result.left_in_shared_memory, std::vector<std::string>{});
    EXPECT_EQ(read_text(file), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{folder.path("")}, {}), 1) << "no temporary folder";
}

}  // namespace
}  // namespace tamrix::tests
