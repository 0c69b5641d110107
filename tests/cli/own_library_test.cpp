// The library of a person's own, which the workbench uses as well.
#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class own_library : public testing::Test {
protected:
    own_library()
    {
        for (const std::string name : {"lib", "lib1"}) {
            std::filesystem::create_directories(folder.path("installed"));
            std::filesystem::copy(TAMRIX_SAMPLES "/../" + name, folder.path("installed/" + name));
        }
        std::filesystem::copy(TAMRIX_SAMPLES "/../chips", folder.path("installed/chips"));
        folder.write("rows.txt", "0H0H0HGH0H0H0V\n");
    }
    command_result ttl(std::vector<std::string> words) const
    {
        words.insert(words.begin(), "ttl");
        return tamrix_command(words, {.folder = folder.path(""),
                                      .environment = {"XDG_DATA_HOME=" + folder.path("home"),
                                                      "TAMRIX_DATA=" + folder.path("installed")}});
    }
    std::string installed() const { return read_text(folder.path("installed/lib/test.lib")); }

    const temp_folder folder;
    const std::string own = folder.path("home/tamrix/lib/test.lib");
};

TEST_F(own_library, is_a_copy_that_the_first_use_makes)
{
    EXPECT_EQ(ttl({"show", "7400"}).status, 0);
    EXPECT_EQ(read_text(own), installed());
}

TEST_F(own_library, takes_what_is_added_and_deleted_and_the_installed_one_stays)
{
    const std::string before = installed();
    EXPECT_EQ(ttl({"add", "MINE", "14", "rows.txt"}).out, "MINE added\n");
    EXPECT_EQ(ttl({"delete", "7400"}).out, "7400 deleted\n");
    EXPECT_EQ(ttl({"test", "MINE", "--socket", "7404"}).status, 0);
    EXPECT_EQ(ttl({"show", "7400"}).status, 1);
    EXPECT_EQ(installed(), before);
}

TEST_F(own_library, is_not_used_where_another_folder_is_named)
{
    EXPECT_EQ(ttl({"list", "--syspath", "installed"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path("home")));
}

TEST_F(own_library, the_installed_one_is_not_changed_where_it_is_named_either)
{
    const std::string before = installed();
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"delete", "7400"}, {"add", "MINE", "14", "rows.txt"}, {"reset"}}) {
        std::vector<std::string> all{words};
        all.insert(all.end(), {"--syspath", "installed"});
        const auto result = ttl(all);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "tamrix: --syspath installed/: the installed library is never changed; without --syspath "
                              "your own one is\n");
    }
    EXPECT_EQ(installed(), before);
}

TEST_F(own_library, a_reset_brings_the_installed_one_back_and_keeps_the_other)
{
    ttl({"add", "MINE", "14", "rows.txt"});
    const std::string mine = read_text(own);
    const auto result = ttl({"reset"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, own + ": kept as " + own + ".before-reset\n" + own + ": the installed library again\n");
    EXPECT_EQ(read_text(own), installed());
    EXPECT_EQ(read_text(own + ".before-reset"), mine);
    EXPECT_EQ(ttl({"reset"}).out, own + ": the installed library already\n");
    ttl({"delete", "7400"});
    EXPECT_THAT(ttl({"reset"}).out, HasSubstr(own + ".before-reset-2\n"));
    EXPECT_EQ(read_text(own + ".before-reset"), mine);
}

TEST_F(own_library, a_reset_is_of_the_model_that_is_named)
{
    const std::string old_model = folder.path("home/tamrix/lib1/test190.lib");
    ttl({"delete", "7400"});
    const std::string mine = read_text(own);
    ttl({"delete", "7400", "--model", "22"});
    EXPECT_THAT(ttl({"reset", "--model", "22"}).out, StartsWith(old_model + ": kept as "));
    EXPECT_EQ(read_text(old_model), read_text(folder.path("installed/lib1/test190.lib")));
    EXPECT_EQ(read_text(own), mine);
}

TEST_F(own_library, a_home_that_takes_no_copy_is_no_obstacle_to_reading)
{
    folder.write("home", "a file in the way");
    const auto shown = ttl({"show", "7400"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_THAT(shown.out, StartsWith("pins: 14\n"));
    EXPECT_THAT(shown.err, StartsWith("tamrix: note: " + folder.path("home/tamrix/lib: ")));
    EXPECT_THAT(shown.err, HasSubstr("; the installed library is used\n"));
    const std::string before = installed();
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"delete", "7400"}, {"add", "MINE", "14", "rows.txt"}, {"reset"}}) {
        EXPECT_EQ(ttl(words).status, 1);
    }
    EXPECT_EQ(installed(), before);
}

}  // namespace
}  // namespace tamrix::tests
