// The `tamrix-chips` command.
#include "chips/command.h"

#include "library_file.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

const std::string chips = TAMRIX_DATA_FOLDER "/chips";

TEST(chips_command, check_counts_chips_and_devices)
{
    temp_folder folder;
    const auto file = folder.write("a.chip", "chip 1A\nalias 1B\npins A B NC GND Y NC NC VCC\nY = A ^ B\n");
    const auto result = sim::run_chips_command({"check", file});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "1 chips, 2 devices\n");
}

TEST(chips_command, generate_writes_every_file_that_it_is_told)
{
    temp_folder folder;
    const auto file = folder.write("a.chip", "chip T1\npins A NC NC GND Y NC NC VCC\nY = !A\n");
    const auto one = folder.path("deep/one.lib"), two = folder.path("two.lib");
    EXPECT_EQ(sim::run_chips_command({"generate", file, "--out", one, "--out", two}).err, "");
    const auto lines = lines_of(read_text(one));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "$KSM00000000001\x02T1*");
    const auto record = record_of(lines[1]);
    EXPECT_EQ(record.name, "T1");
    EXPECT_EQ(lines[1].substr(13, 5), "03\x02"
                                      "08");  // rows plus one, and the pins
    EXPECT_EQ(lines[2], "end-ksm");
    EXPECT_EQ(read_text(one), read_text(two));
}

TEST(chips_command, coverage_ends_with_the_sum)
{
    temp_folder folder;
    const auto file = folder.write("a.chip", "chip T1\npins A NC NC GND Y NC NC VCC\nY = !A\n");
    const auto result = sim::run_chips_command({"coverage", file});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(lines_of(result.out).size(), 1u);  // no CR in it
    EXPECT_TRUE(result.out.ends_with("1 devices, 12 of 12 faults found, 100.00 %\n")) << result.out;
}

TEST(chips_command, a_folder_stands_for_its_chip_files)
{
    EXPECT_EQ(sim::run_chips_command({"check", chips}).status, 0);
}

TEST(chips_command, wrong_words_show_the_usage)
{
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{{},
                                                                                       {"check"},
                                                                                       {"make", chips},
                                                                                       {"generate", chips},
                                                                                       {"check", chips, "--out", "x"},
                                                                                       {"generate", chips, "--out"}}) {
        const auto result = sim::run_chips_command(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.err.starts_with("usage: tamrix-chips check FILE...")) << result.err;
    }
}

TEST(chips_command, what_cannot_be_read_or_written_is_told)
{
    temp_folder folder;
    const auto missing = sim::run_chips_command({"check", folder.path("no.chip")});
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find("no.chip: the file cannot be read"), std::string::npos) << missing.err;
    const auto file = folder.write("a.chip", "chip T1\npins A NC NC GND Y NC NC VCC\nY = !A\n");
    const auto unwritten = sim::run_chips_command({"generate", file, "--out", file + "/x.lib"});
    EXPECT_EQ(unwritten.status, 1);
    EXPECT_NE(unwritten.err.find("x.lib: the file cannot be written"), std::string::npos) << unwritten.err;
    const auto wrong = sim::run_chips_command({"check", folder.write("b.chip", "chip T1\npins A\n")});
    EXPECT_EQ(wrong.err, "tamrix-chips: b.chip:2: found 1 pins where an even number was expected\n");
}

}  // namespace
}  // namespace tamrix::tests
