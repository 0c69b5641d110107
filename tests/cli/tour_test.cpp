#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::tests {

using testing::HasSubstr;

TEST(tour, detects_converts_compares_and_shows_what_failures_say)
{
    const auto result = tamrix_command({"tour"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("$ tamrix detect blink.hex\nblink.hex: 1 intel\n"));
    EXPECT_THAT(
        result.out,
        HasSubstr("$ tamrix convert blink.hex blink.bin\nblink.hex: intel, 129 bytes in 4 segments, 0x0 to 0x13F\n"));
    EXPECT_THAT(result.out, HasSubstr("blink.bin and again.bin hold the same 320 bytes"));
    EXPECT_THAT(result.out, HasSubstr("tamrix: damaged.hex:5: checksum "));
    EXPECT_THAT(result.out, HasSubstr("(exit status 1)"));
    EXPECT_THAT(result.out, HasSubstr("tamrix: --to-buffer 101: beyond the end of the buffer (100)\n(exit status 2)"));
    EXPECT_THAT(result.out, HasSubstr("--socket 7400\n7400: Vector Test OK!\n"));
    EXPECT_THAT(result.out, HasSubstr("--fault \"pin 3 stuck 0\"\nExpected: V0002:"));
    EXPECT_THAT(result.out, HasSubstr("$ tamrix ttl find --socket 74193\n40193\n74193\n"));
    EXPECT_THAT(result.out, HasSubstr("$ tamrix selftest --brief\nSystem Test: passed, as far as it was tested\n"));
    EXPECT_THAT(result.out, HasSubstr("$ tamrix selftest --brief --fault \"vcc driver 7 dead\"\n"
                                      "fault: pin 7 (port 4 bit 2): VCC driver: expected high, read low\n"
                                      "System Test: failed, 1 fault\n(exit status 1)\n"));
}

TEST(tour, records_and_draws_signals_and_measures_a_frequency)
{
    const auto result = tamrix_command({"tour"}, {.environment = {"LC_ALL=C"}});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("--signal \"P25 square 2000 duty 10\"\n"
                                      "signals.bin: 32768 samples, 111.411 ms at 3.4 us a sample\n"));
    EXPECT_THAT(result.out, HasSubstr("$ tamrix analyze draw signals.bin --samples 304\n"));
    EXPECT_THAT(result.out,
                HasSubstr("P25    |_________________________________|  |________________________________|\n"));
    EXPECT_THAT(result.out, HasSubstr("-o signals.svg\nsignals.svg: samples 0 to 599 of signals.bin\n"));
    EXPECT_THAT(result.out, HasSubstr("\nP25: 445 edges, 2000.0"));
    EXPECT_THAT(result.out, HasSubstr("$ tamrix wave generate 60000\nasked 60000\nshown 62000\n"));
    EXPECT_THAT(result.out, HasSubstr("--count 3\n062000\n062000\n062000\nmean 62000.0 Hz\n"));
}

TEST(tour, runs_on_the_data_that_the_environment_names)
{
    const temp_folder folder;
    std::filesystem::copy(TAMRIX_SAMPLES "/..", folder.path("."), std::filesystem::copy_options::recursive);
    const auto result = tamrix_command({"tour"}, {.environment = {"TAMRIX_DATA=" + folder.path("")}});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("A tour on " + folder.path("samples/blink.hex")));
}

TEST(tour, without_its_sample_says_what_is_missing)
{
    const temp_folder folder;
    const auto result = tamrix_command({"tour"}, {.environment = {"TAMRIX_DATA=" + folder.path("none")}});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: " + folder.path("none/samples/blink.hex") + ": cannot be read\n");
}

TEST(tour, leaves_no_files_behind)
{
    const temp_folder folder;
    EXPECT_EQ(tamrix_command({"tour"}, {.environment = {"TMPDIR=" + folder.path("")}}).status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

}  // namespace tamrix::tests
