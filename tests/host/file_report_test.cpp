#include "host/file_report.h"

#include "files/file_io.h"
#include "support/temp_files.h"

#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct file_reports : testing::Test {
    tests::temp_folder folder;
};

}  // namespace

TEST_F(file_reports, say_what_a_sound_file_holds)
{
    const std::string path =
        folder.write("app.hex", ":020000040800F2\n:0400000001020304F2\n:0400000508000001EE\n:00000001FF\n");
    const file_report report = report_on(path, "intel");
    EXPECT_EQ(report.damaged_places, 0u);
    EXPECT_THAT(report.remarks, IsEmpty());
    EXPECT_THAT(report.lines,
                ElementsAre(path + ": intel, 4 bytes, 0x8000000 to 0x8000003", "  start address: 0x8000001",
                            "  sum of bytes: 0x0000000A (16 bits: 0x000A), CRC-32: 0xB63CFBCD"));
    EXPECT_EQ(report.image.at(0x8000002), 3);
}

TEST_F(file_reports, give_the_header_of_a_file)
{
    const std::string path = folder.write("a.s19", "S00600004844521B\nS1050010010203E4\nS5030001FB\nS9030000FC\n");
    EXPECT_THAT(report_on(path, "motorola").lines, testing::Contains("  header: HDR"));
}

TEST_F(file_reports, list_ten_segments_and_count_the_others)
{
    std::string records;
    for (const char* record :
         {":0100000001FE\n", ":0100100001EE\n", ":0100200001DE\n", ":0100300001CE\n", ":0100400001BE\n",
          ":0100500001AE\n", ":01006000019E\n", ":01007000018E\n", ":01008000017E\n", ":01009000016E\n"})
        records += record;
    const auto segment_lines = [&](const std::string& more) {
        const auto lines = report_on(folder.write("a.hex", records + more + ":00000001FF\n"), "intel").lines;
        return std::vector<std::string>(lines.begin() + 1, lines.end() - 1);
    };
    EXPECT_THAT(segment_lines(""), SizeIs(10));
    EXPECT_EQ(segment_lines("").back(), "  0x90 to 0x90 (1 byte)");
    EXPECT_THAT(segment_lines(":0100A000015E\n:0100B000014E\n"), SizeIs(11));
    EXPECT_EQ(segment_lines(":0100A000015E\n:0100B000014E\n").back(), "  and 2 more");
}

TEST_F(file_reports, list_damage_and_say_it_in_a_sentence)
{
    const std::string path = folder.write("boot.hex", ":0100000011EF\n:00000001FF\n");
    const file_report report = report_on(path, "intel");
    EXPECT_THAT(report.remarks, ElementsAre(path + ":1: checksum EF where EE was expected"));
    EXPECT_EQ(damage_text(report), "boot.hex is damaged at 1 place.");
}

TEST_F(file_reports, list_ten_places_of_damage_and_their_count)
{
    std::string records;
    for (int i = 0; i < 10; ++i) records += ":01000" + std::to_string(i) + "0011FF\n";
    const std::string ten = folder.write("ten.hex", records + ":00000001FF\n");
    EXPECT_THAT(report_on(ten, "intel").remarks, SizeIs(10));
    const std::string more = folder.write("more.hex", records + ":0100200011FF\n:00000001FF\n");
    const file_report report = report_on(more, "intel");
    EXPECT_THAT(report.remarks, SizeIs(11));
    EXPECT_EQ(report.remarks.back(), more + ": damaged at 11 places in all");
    EXPECT_EQ(damage_text(report), "more.hex is damaged at 11 places.");
}

TEST_F(file_reports, describe_fuses)
{
    const std::string path = folder.write("a.jed", "\x02Mine*QF8*F1*L0 0101*C00FA*\x03"
                                                   "0000\r\n");
    const file_report report = report_on(path, "jedec");
    EXPECT_THAT(report.remarks, IsEmpty());
    EXPECT_EQ(report.fuses, 8u);
    EXPECT_THAT(report.lines, ElementsAre(path + ": jedec, fuses: 8, of which 1: 6, by default: 4, not in the file: 0",
                                          "  fuse checksum: 00FA, vectors: 0"));
}

TEST_F(file_reports, find_damage_in_fuse_files)
{
    const std::string path = folder.write("a.jed", "\x02Mine*QF4*L0 0101*C0001*\x03"
                                                   "0000\r\n");
    EXPECT_THAT(report_on(path, "jedec").remarks, ElementsAre(path + ":1: fuse checksum 0001 where 000A was expected"));
}

TEST_F(file_reports, describe_serial_vectors)
{
    const std::string path = folder.write("a.svf", "SIR 8 TDI (FF);\nSTATE IDLE;\n");
    EXPECT_THAT(report_on(path, "svf").lines, ElementsAre(path + ": svf, statements: 2, bits shifted: 8"));
    const std::string damaged = folder.write("b.svf", "SIR 8 TDI (FFF);\n");
    EXPECT_EQ(report_on(damaged, "svf").damaged_places, 1u);
}

TEST_F(file_reports, a_file_that_cannot_be_read_and_a_format_that_is_unknown_throw)
{
    EXPECT_THROW(report_on(folder.path("none.hex"), "intel"), file_error);
    EXPECT_THROW(report_on(folder.write("a.bin", "x"), "nobody's"), std::invalid_argument);
}

}  // namespace tamrix::host
