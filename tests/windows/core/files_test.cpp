// Files and paths as Windows has them.
#include "base/native_path.h"
#include "files/file_io.h"
#include "files/replace_file.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <windows.h>

namespace tamrix::tests {
namespace {

std::string reason_of_opening(const std::string& path)
{
    try {
        const input_file file{path};
    } catch (const file_error& error) {
        return error.why().found;
    }
    return {};
}

TEST(native_path_on_windows, keeps_the_name_of_a_computer)
{
    EXPECT_EQ(native_path(R"(\\server\share\\x.hex)"), "//server/share/x.hex");
    EXPECT_EQ(native_path(R"(\\\server)"), "/server");
    EXPECT_EQ(native_path(R"(C:\data\\/x.hex)"), "C:/data/x.hex");
    EXPECT_EQ(native_path(R"(\)"), "/");
    EXPECT_EQ(native_path(R"(\\)"), "/");
    EXPECT_EQ(native_path(""), "");
}

TEST(files_on_windows, take_names_in_every_script_and_both_separators)
{
    const temp_folder files;
    const std::string name = files.path("") + R"(\\Größe 電 😀.bin)";
    {
        output_file file{name};
        const std::vector<std::uint8_t> bytes{'a', '\r', '\n', 0x1A, 'b'};
        file.write(bytes);
        file.close();
    }
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path{files.path("")} / L"Größe 電 😀.bin"));
    const file_image image{name};
    EXPECT_EQ(std::string(image.bytes().begin(), image.bytes().end()), "a\r\n\x1A"
                                                                       "b")
        << "no byte is translated";
    EXPECT_EQ(file_time_text(name).size(), 17u);
}

TEST(files_on_windows, tell_why_they_cannot_be_read)
{
    const temp_folder files;
    EXPECT_EQ(reason_of_opening(files.path("missing.bin")), "no such file");
    EXPECT_EQ(reason_of_opening(files.path("no\\folder")), "no such file");
    EXPECT_EQ(reason_of_opening(files.path("")), "a directory where a file was expected");
    EXPECT_EQ(reason_of_opening("NUL"), "a device where a file was expected");
    const std::string held = files.write("held.bin", "abc");
    const HANDLE alone = ::CreateFileA(held.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(reason_of_opening(held), "permission denied");
    ::CloseHandle(alone);
    EXPECT_EQ(reason_of_opening(held), "");
}

TEST(save_library_on_windows, replaces_the_file_and_leaves_no_other)
{
    const temp_folder files;
    const std::string library = files.write("test.lib", "a longer old text");
    replace_file(library, "new");
    EXPECT_EQ(read_text(library), "new");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{files.path("")}, {}), 1);
}

TEST(save_library_on_windows, makes_a_file_that_is_not_there_yet)
{
    const temp_folder files;
    replace_file(files.path("new.lib"), "new");
    EXPECT_EQ(read_text(files.path("new.lib")), "new");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{files.path("")}, {}), 1);
    EXPECT_THROW(replace_file(files.path("no/new.lib"), "new"), file_error);
}

TEST(save_library_on_windows, clears_away_what_killed_saves_left)
{
    const temp_folder files;
    const std::string library = files.write("test.lib", "old");
    const std::string nobody = "2147483644";
    const std::string own = std::to_string(::GetCurrentProcessId());
    files.write("test.lib.saving-" + nobody + "-1234", "ha");
    std::vector<std::string> others{"test.lib.saving-" + own + "-1234", "other.lib.saving-" + nobody + "-1234",
                                    "test.lib." + nobody + "-1234", "test.lib.backup"};
    for (const char* end : {"-", "-1234x", "x-1234", "", "-1234-1", "-12345678901", "0-1234"})
        others.push_back("test.lib.saving-" + nobody + end);
    for (const std::string& name : others) files.write(name, "mine");
    const std::string held = files.write("test.lib.saving-" + nobody + "-5678", "mine");
    const HANDLE user = ::CreateFileA(held.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    replace_file(library, "new");
    EXPECT_EQ(read_text(library), "new");
    EXPECT_FALSE(std::filesystem::exists(files.path("test.lib.saving-" + nobody + "-1234")));
    for (const std::string& name : others) EXPECT_EQ(read_text(files.path(name)), "mine") << name;
    EXPECT_EQ(read_text(held), "mine");
    ::CloseHandle(user);
    replace_file(library, "newer");
    EXPECT_FALSE(std::filesystem::exists(held));
}

TEST(save_library_on_windows, does_not_replace_a_file_that_may_not_be_written)
{
    const temp_folder files;
    const std::string library = files.write("test.lib", "old");
    ::SetFileAttributesA(library.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_THROW(replace_file(library, "new"), file_error);
    ::SetFileAttributesA(library.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(read_text(library), "old");
}

}  // namespace
}  // namespace tamrix::tests
