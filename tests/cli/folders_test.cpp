// Folders that are missing, and folders without their last separator.
#include "cli/folders.h"

#include "cli/command_inside.h"
#include "cli/console.h"
#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tamrix::tests {
namespace {

TEST(folders, the_first_missing_one_is_named)
{
    const temp_folder folder;
    const std::string there = folder.path(""), missing = folder.path("out");
    EXPECT_EQ(cli::missing_folder_of(there + "x.bin"), "");
    EXPECT_EQ(cli::missing_folder_of("x.bin"), "");
    EXPECT_EQ(cli::missing_folder_of("/x.bin"), "");
    EXPECT_EQ(cli::missing_folder_of(missing + "/x.bin"),
              missing + "/x.bin: the folder " + missing + " does not exist");
    EXPECT_EQ(cli::missing_folder_of(missing + "/deep/x.bin"),
              missing + "/deep/x.bin: the folder " + missing + " does not exist");
    EXPECT_EQ(cli::missing_folder_of("out\\x.bin"), "out\\x.bin: the folder out does not exist");
}

TEST(folders, a_word_gets_its_last_separator)
{
    EXPECT_EQ(cli::folder_word("--syspath", "work"), "work/");
    EXPECT_EQ(cli::folder_word("--syspath", "work/"), "work/");
    EXPECT_EQ(cli::folder_word("--syspath", "work\\"), "work\\");
    EXPECT_EQ(cli::folder_word("--syspath", "/"), "/");
    EXPECT_THROW(cli::folder_word("--syspath", ""), cli::command_error);
}

TEST(folders, a_command_says_which_one_is_missing)
{
    const temp_folder folder;
    folder.write("signals.bin", std::string(32768, 'a'));
    const struct {
        std::vector<std::string> words;
        int status;
        std::string text;
    } all[] = {
        {{"analyze", "record", "-o", "out/x.bin"}, 1, "out/x.bin: the folder out does not exist"},
        {{"analyze", "draw", "signals.bin", "-o", "out/in/x.svg"}, 1, "out/in/x.svg: the folder out does not exist"},
        {{"wave", "generate", "1000", "--transcript", "out/x.txt"},
         2,
         "--transcript out/x.txt: the folder out does not exist"},
        {{"ttl", "list", "--syspath", "out"}, 1, "out/lib/test.lib: the folder out does not exist"},
        {{"ttl", "find", "--syspath", "out"}, 1, "out/lib/test.lib: the folder out does not exist"},
        {{"ttl", "reset", "--syspath", "out"}, 1, "out/lib/test.lib: the folder out does not exist"},
        {{"ttl", "list", "--syspath", ""}, 2, "--syspath: the name of a folder is expected"},
    };
    for (const auto& [words, status, text] : all) {
        const auto result = tamrix_command(words, {.folder = folder.path("")});
        EXPECT_EQ(result.err, "tamrix: " + text + "\n");
        EXPECT_EQ(result.status, status) << text;
        EXPECT_EQ(result.out, "") << text;
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("out")));
}

TEST(folders, commands_take_them_without_the_last_separator)
{
    const temp_folder folder;
    folder.write("a.svf", "STATE IDLE;\n");
    std::filesystem::create_directory(folder.path("work"));
    std::filesystem::copy(TAMRIX_SAMPLES "/../lib", folder.path("work/lib"));
    const command_setting there{.folder = folder.path("")};
    EXPECT_EQ(tamrix_command({"ttl", "show", "7400", "--syspath", "work"}, there).status, 0);
    EXPECT_TRUE(tamrix_command({"svf", "a.svf", "--syspath", "work"}, there).out.ends_with("\nwork/pldtmp.svf\n"));
    EXPECT_EQ(read_text(folder.path("work/pldtmp.svf")), "STATE IDLE;\r\n");
}

TEST(folders, a_transcript_keeps_its_old_content_until_the_new_one_is_whole)
{
    const temp_folder folder;
    const std::string file = folder.write("calls.txt", "old");
    EXPECT_NE(command_inside({"wave", "generate", "1000", "--transcript", file, "--signal", "P23 high"}).status, 0);
    EXPECT_NE(command_inside({"selftest", "--item", "99", "--transcript", file}).status, 0);
    EXPECT_EQ(read_text(file), "old");
    EXPECT_EQ(command_inside({"wave", "generate", "1000", "--transcript", file}).status, 0);
    EXPECT_GT(read_text(file).size(), 100U);
}

}  // namespace
}  // namespace tamrix::tests
