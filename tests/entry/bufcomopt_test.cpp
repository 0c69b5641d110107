#include "entry/entry_methods.h"
#include "support/plug_in_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace tamrix {
namespace {

/// The help file after a bufcomopt that finds this language in the blocks of a host.
std::string help_file(int language, const std::string& system_folder = "")
{
    tests::scripted_shell shell;
    const std::string name_space = tests::fresh_name_space();
    session host{shell, name_space}, plug_in{shell, name_space};
    host.blocks.attachsmall(1);
    host.blocks.Language(0) = language;
    plug_in.syspath = system_folder;
    module_variables variables;
    entry_methods methods{plug_in, variables};
    std::int16_t num = 1;
    EXPECT_TRUE(methods.bufcomopt(num).ok());
    return plug_in.help_file;
}

TEST(bufcomopt, selects_the_common_help_file_for_language_9000) { EXPECT_EQ(help_file(9000), "help.chm::help.txt"); }

TEST(bufcomopt, selects_the_help_file_by_language)
{
    for (int language = 0; language <= 33000; language += 3000) {
        const std::string expected = language == 3000    ? "readhelp.chm::readhelp.txt"
                                     : language == 6000  ? "readhelpf.chm::readhelpf.txt"
                                     : language == 12000 ? "plhelp.chm::help.txt"
                                                         : "help.chm::help.txt";
        EXPECT_EQ(help_file(language), expected) << language;
    }
    for (const int language : {-3000, 1, 2999, 3001, 36000}) EXPECT_EQ(help_file(language), "help.chm::help.txt");
}

TEST(bufcomopt, puts_the_system_folder_of_the_last_call_before_the_help_file)
{
    EXPECT_EQ(help_file(3000, "C:\\Programmer\\"), "C:\\Programmer\\readhelp.chm::readhelp.txt");
    EXPECT_EQ(help_file(0, "/opt/no-separator"), "/opt/no-separatorhelp.chm::help.txt");
}

TEST(buffercomopt, does_not_use_its_instance_number)
{
    tests::plug_in_fixture f;
    for (std::int16_t num : {1, 2, 100, -1}) {
        EXPECT_TRUE(f.methods.buffercomopt(num).ok());
        EXPECT_EQ(f.session.blocks.ibuffer.count(), 0x1898u);
    }
}

}  // namespace
}  // namespace tamrix
