#include "pld/svf.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

struct svf_fixture : plug_in_fixture {
    reply read(const std::string& file, std::string folder)
    {
        std::string name = file;
        return methods.readsvffile(name, folder);
    }
    reply copy(std::string_view text) { return read(files.write("a.svf", text), files.path("")); }
    std::string copied() const { return read_text(files.path("pldtmp.svf")); }

    temp_folder files;
};

const variant good{std::int16_t{0}};

TEST(read_svf, the_lines_are_copied_with_CR_LF)
{
    svf_fixture f;
    EXPECT_EQ(f.copy("! made here\nSIR 8 TDI (FF);\r\nRUNTEST 1 TCK;\rSTATE IDLE;\n").value, good);
    EXPECT_EQ(f.copied(), "! made here\r\nSIR 8 TDI (FF);\r\nRUNTEST 1 TCK;\r\nSTATE IDLE;\r\n");
}

TEST(read_svf, a_last_line_without_its_end_gains_one)
{
    svf_fixture f;
    EXPECT_EQ(f.copy("STATE IDLE;").value, good);
    EXPECT_EQ(f.copied(), "STATE IDLE;\r\n");
}

TEST(read_svf, an_empty_file_yields_1_and_leaves_the_older_copy)
{
    svf_fixture f;
    f.files.write("pldtmp.svf", "old");
    EXPECT_EQ(f.copy("").value, variant{std::int16_t{1}});
    EXPECT_EQ(f.copied(), "old");
}

TEST(read_svf, a_source_that_cannot_be_opened_yields_0_with_the_reason)
{
    svf_fixture f;
    const std::string missing = f.files.path("missing.svf");
    EXPECT_EQ(f.read(missing, f.files.path("")).value, good);
    EXPECT_EQ(f.variables.transfer.why_it_failed.text(), missing + ": no such file");
}

TEST(read_svf, the_path_is_joined_as_it_stands)
{
    svf_fixture f;
    f.read(f.files.write("a.svf", "x\n"), f.files.path("prefix-"));
    EXPECT_EQ(read_text(f.files.path("prefix-pldtmp.svf")), "x\r\n");
    EXPECT_EQ(f.session.syspath, "") << "the path is used and not stored";
}

TEST(read_svf, a_line_longer_than_any_buffer_is_copied_whole)
{
    svf_fixture f;
    const std::string line(3000000, 'A');
    f.copy(line + "\nB");
    EXPECT_EQ(f.copied(), line + "\r\nB\r\n");
}

}  // namespace
}  // namespace tamrix::tests
