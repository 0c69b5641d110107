// Which files are those of a logic device, by their content; and files that could be of two kinds.
#include "files/file_io.h"
#include "formats/formats.h"
#include "pld/detect.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

struct detect_pld : testing::Test {
    pld_format detect(std::string_view content) { return detect_pld_format(files.write("file", content)); }

    temp_folder files;
};

constexpr std::string_view fuse_rows = "QF8*\nL0000 01011100*\n", intel_record = ":0100000011EE\n",
                           motorola_record = "S1060000AABBCCC8\n";

std::string text(std::initializer_list<std::string_view> parts)
{
    std::string all;
    for (const auto part : parts) all += part;
    return all;
}

TEST_F(detect_pld, a_fuse_row_with_a_fuse_count_or_behind_the_start_mark_is_a_fuse_file)
{
    EXPECT_EQ(detect(fuse_rows), pld_format::jedec);
    EXPECT_EQ(detect("\x02Title*\nL0000 01011100*\n"), pld_format::jedec);
    EXPECT_EQ(detect("Title*QF8*L0000 01011100*C0000*"), pld_format::jedec);
    EXPECT_EQ(detect("Title*\nL0000 01011100*\n"), pld_format::none);
    EXPECT_EQ(detect("\x02Title*\nLOW*\n"), pld_format::none);
    EXPECT_EQ(detect("QF8\nL0000 01011100\n"), pld_format::none);
}

TEST_F(detect_pld, a_command_behind_comments_and_blank_lines_is_an_svf_file)
{
    EXPECT_EQ(detect("! made here\r\n\r\n  // by hand\r\n\tTRST OFF;\r\n"), pld_format::svf);
    EXPECT_EQ(detect("STATE;"), pld_format::svf);
    EXPECT_EQ(detect("SDR(8"), pld_format::svf);
    EXPECT_EQ(detect("STATEMENT of account\n"), pld_format::none);
    EXPECT_EQ(detect("The STATE;\n"), pld_format::none);
    EXPECT_EQ(detect("! nothing but a comment"), pld_format::none);
}

TEST_F(detect_pld, an_empty_file_and_one_with_a_NUL_are_none)
{
    EXPECT_EQ(detect(""), pld_format::none);
    EXPECT_EQ(detect(text({fuse_rows, std::string_view{"\0", 1}})), pld_format::none);
    EXPECT_EQ(detect(text({"STATE IDLE;", std::string_view{"\0", 1}})), pld_format::none);
}

TEST_F(detect_pld, a_missing_file_is_told) { EXPECT_THROW(detect_pld_format(files.path("missing")), file_error); }

TEST_F(detect_pld, a_fuse_file_stays_one_whatever_its_header_quotes)
{
    EXPECT_EQ(detect(text({"\x02", intel_record, motorola_record, fuse_rows})), pld_format::jedec);
    EXPECT_EQ(detect(text({"SIR 8 TDI (FF);\n", fuse_rows})), pld_format::jedec);
    EXPECT_EQ(detect(text({"@0000\n01 02\nq\n", fuse_rows})), pld_format::jedec);
}

TEST_F(detect_pld, an_svf_file_stays_one_whatever_its_comments_quote)
{
    EXPECT_EQ(detect(text({"! ", intel_record, "! ", motorola_record, "! QF8* L0000 0101*\nSTATE IDLE;\n"})),
              pld_format::svf);
    EXPECT_EQ(detect(text({"STATE IDLE;\n", intel_record, motorola_record})), pld_format::svf);
}

TEST_F(detect_pld, records_stay_records_whatever_stands_around_them)
{
    const std::string behind_text = text({"; SIR 8 and QF8* L0000*\n", intel_record, "STATE IDLE;\n"});
    EXPECT_EQ(detect(behind_text), pld_format::none);
    EXPECT_EQ(detect_format(files.write("file", behind_text)).index, 1);
    const std::string before_text = text({motorola_record, "SDR 8;\nL0000 for a title*\n"});
    EXPECT_EQ(detect(before_text), pld_format::none);
    EXPECT_EQ(detect_format(files.write("file", before_text)).index, 2);
}

}  // namespace
}  // namespace tamrix::tests
