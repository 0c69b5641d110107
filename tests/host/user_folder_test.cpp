#include "host/user_folder.h"

#include "support/temp_files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tamrix::host {
namespace {

namespace fs = std::filesystem;

class own_libraries : public testing::Test {
protected:
    tests::temp_folder folder;
    const std::string installed = folder.path("installed"), data = folder.path("data");

    own_libraries() { setenv("XDG_DATA_HOME", data.c_str(), 1); }
    ~own_libraries() override { unsetenv("XDG_DATA_HOME"); }
    void write(const std::string& path, const std::string& text) const
    {
        fs::create_directories(fs::path{path}.parent_path());
        std::ofstream{path, std::ios::binary} << text;
    }
    static std::string content(const std::string& path)
    {
        std::ifstream file{path, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }
    void install()
    {
        write(installed + "/lib/test.lib", "new library");
        write(installed + "/lib1/test190.lib", "old library");
    }
};

TEST_F(own_libraries, are_copied_at_first_use)
{
    install();
    const std::string own = own_logic_libraries(installed);
    EXPECT_EQ(own, data + "/tamrix/");
    EXPECT_EQ(content(own + "lib/test.lib"), "new library");
    EXPECT_EQ(content(own + "lib1/test190.lib"), "old library");
}

TEST_F(own_libraries, keep_what_the_person_changed)
{
    install();
    const std::string own = own_logic_libraries(installed);
    write(own + "lib/test.lib", "my devices");
    write(installed + "/lib/test.lib", "newer library");
    EXPECT_EQ(own_logic_libraries(installed), own);
    EXPECT_EQ(content(own + "lib/test.lib"), "my devices");
    EXPECT_EQ(content(installed + "/lib/test.lib"), "newer library");
}

TEST_F(own_libraries, an_empty_file_counts_as_missing)
{
    write(data + "/tamrix/lib/test.lib", "");
    install();
    EXPECT_EQ(content(own_logic_libraries(installed) + "lib/test.lib"), "new library");
}

TEST_F(own_libraries, can_be_written_where_the_installed_ones_cannot)
{
    install();
    ASSERT_EQ(chmod((installed + "/lib/test.lib").c_str(), 0444), 0);
    const std::string own = own_logic_libraries(installed) + "lib/test.lib";
    EXPECT_NE(fs::status(own).permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(own_libraries, a_reset_brings_the_installed_one_back_and_keeps_every_older_one)
{
    install();
    const std::string installed_one = installed + "/lib/test.lib";
    const std::string own = own_logic_libraries(installed) + "lib/test.lib";
    write(own, "my devices");
    const library_reset first = reset_library(installed_one, own);
    EXPECT_TRUE(first.changed);
    EXPECT_EQ(first.kept_as, own + ".before-reset");
    EXPECT_EQ(content(own), "new library");
    write(own, "other devices");
    EXPECT_EQ(reset_library(installed_one, own).kept_as, own + ".before-reset-2");
    write(own, "more devices");
    EXPECT_EQ(reset_library(installed_one, own).kept_as, own + ".before-reset-3");
    EXPECT_EQ(content(own), "new library");
    EXPECT_EQ(content(own + ".before-reset"), "my devices");
    EXPECT_EQ(content(own + ".before-reset-2"), "other devices");
    EXPECT_EQ(content(own + ".before-reset-3"), "more devices");
    EXPECT_EQ(content(installed_one), "new library");
}

TEST_F(own_libraries, a_reset_changes_nothing_where_the_installed_one_is_in_use)
{
    install();
    const std::string own = own_logic_libraries(installed) + "lib/test.lib";
    const library_reset done = reset_library(installed + "/lib/test.lib", own);
    EXPECT_FALSE(done.changed);
    EXPECT_EQ(done.kept_as, "");
    EXPECT_EQ(std::distance(fs::directory_iterator{fs::path{own}.parent_path()}, {}), 1);
}

TEST_F(own_libraries, a_reset_of_a_missing_one_keeps_nothing)
{
    install();
    write(data + "/lib/other.lib", "");
    const std::string own = data + "/lib/test.lib";
    const library_reset done = reset_library(installed + "/lib/test.lib", own);
    EXPECT_TRUE(done.changed);
    EXPECT_EQ(done.kept_as, "");
    EXPECT_EQ(content(own), "new library");
}

TEST_F(own_libraries, a_reset_without_an_installed_one_changes_nothing)
{
    write(data + "/lib/test.lib", "my devices");
    EXPECT_THROW(reset_library(installed + "/lib/test.lib", data + "/lib/test.lib"), std::runtime_error);
    EXPECT_EQ(content(data + "/lib/test.lib"), "my devices");
}

TEST_F(own_libraries, nothing_but_the_libraries_stays_in_the_folder)
{
    install();
    const std::string own = own_logic_libraries(installed);
    EXPECT_EQ(std::distance(fs::directory_iterator{own + "lib"}, {}), 1);
}

TEST_F(own_libraries, what_a_killed_copy_left_goes_away)
{
    install();
    write(data + "/tamrix/lib/test.lib.saving-aB3xY9", "new lib");
    const std::string own = own_logic_libraries(installed);
    EXPECT_EQ(content(own + "lib/test.lib"), "new library");
    EXPECT_EQ(std::distance(fs::directory_iterator{own + "lib"}, {}), 1);
}

TEST_F(own_libraries, where_none_are_installed_the_folders_are_made_and_stay_empty)
{
    const std::string own = own_logic_libraries(installed);
    EXPECT_TRUE(fs::is_empty(own + "lib"));
    EXPECT_TRUE(fs::is_empty(own + "lib1"));
}

TEST_F(own_libraries, a_folder_that_cannot_be_made_is_told)
{
    install();
    write(data, "a file in the way");
    try {
        own_logic_libraries(installed);
        ADD_FAILURE() << "nothing was told";
    } catch (const std::runtime_error& error) {
        EXPECT_TRUE(std::string{error.what()}.starts_with(data + "/tamrix/lib: ")) << error.what();
    }
}

TEST_F(own_libraries, stand_in_the_home_folder_where_nothing_else_is_told)
{
    const char* home = std::getenv("HOME");
    const std::string before = home != nullptr ? home : "";
    setenv("XDG_DATA_HOME", "", 1);
    setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(user_data_folder(), "/home/somebody/.local/share/tamrix");
    setenv("HOME", before.c_str(), 1);
}

}  // namespace
}  // namespace tamrix::host
