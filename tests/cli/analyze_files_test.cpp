// tamrix analyze info, and what it and draw say of bad files.
#include "cli/capture.h"
#include "cli/command_inside.h"
#include "cli/page_examples.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;

command_result info(const std::string& file, std::vector<std::string> arguments = {})
{
    arguments.insert(arguments.begin(), {"analyze", "info", file});
    return command_inside(arguments);
}

/// Bit 0 is high for one sample of four from the second on, bit 1 rises once, bit 2 falls once, bit 3 has one period,
/// bit 7 is high.
std::vector<std::uint8_t> some_samples()
{
    std::vector<std::uint8_t> samples(32768, 0x80);
    for (std::size_t i = 1; i < samples.size(); i += 4) samples[i] |= 1;
    for (std::size_t i = 8192; i < samples.size(); ++i) samples[i] |= 2;
    for (std::size_t i = 0; i < 16384; ++i) samples[i] |= 4;
    for (const std::size_t i : {100u, 101u, 102u, 110u}) samples[i] |= 8;
    return samples;
}

TEST(analyze_info, says_how_long_a_recording_is_and_what_each_channel_does)
{
    const temp_folder folder;
    const std::string file = folder.write("a.bin", some_samples());
    const auto result = tamrix_command({"analyze", "info", file, "--period", "2.5"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, file + ": 32768 samples, 81.920 ms at 2.5 us a sample\n"
                                 "P21: 16384 edges, 100000.000 Hz, duty 25.0 %\n"
                                 "P22: 1 edge, high 75.0 % of the time\n"
                                 "P23: 1 edge, high 50.0 % of the time\n"
                                 "P24: 4 edges, 40000.000 Hz, duty 30.0 %\n"
                                 "P25: no edge, low\n"
                                 "P26: no edge, low\n"
                                 "P27: no edge, low\n"
                                 "P28: no edge, high\n");
    EXPECT_THAT(info(file).out, HasSubstr(": 32768 samples, 111.411 ms at 3.4 us a sample\n"));
}

TEST(analyze_info, says_it_in_json_too)
{
    const temp_folder folder;
    const std::string file = folder.write("a.bin", some_samples());
    const auto result =
        tamrix_command({"analyze", "info", "a.bin", "--json", "--period", "2.5"}, {.folder = folder.path("")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.substr(0, result.out.find(", {\"pin\": \"P25\"")),
              "{\"file\": \"a.bin\", \"samples\": 32768, \"microseconds_a_sample\": 2.5, \"milliseconds\": 81.920, "
              "\"channels\": [{\"pin\": \"P21\", \"edges\": 16384, \"begins\": \"low\", \"high_percent\": 25.000, "
              "\"hertz\": 100000.000, \"duty_percent\": 25.000}, "
              "{\"pin\": \"P22\", \"edges\": 1, \"begins\": \"low\", \"high_percent\": 75.000}, "
              "{\"pin\": \"P23\", \"edges\": 1, \"begins\": \"high\", \"high_percent\": 50.000}, "
              "{\"pin\": \"P24\", \"edges\": 4, \"begins\": \"low\", \"high_percent\": 0.012, "
              "\"hertz\": 40000.000, \"duty_percent\": 30.000}");
    const auto parsed = run_program({"python3", "-c",
                                     "import json, sys\nall = json.loads(sys.argv[1])\n"
                                     "print(all['samples'], len(all['channels']), all['channels'][7]['begins'])",
                                     result.out});
    EXPECT_EQ(parsed.out, "32768 8 high\n");
}

TEST(analyze_info, finds_the_frequency_that_was_recorded)
{
    const temp_folder folder;
    const std::string file = folder.path("a.bin");
    EXPECT_EQ(command_inside({"analyze", "record", "-o", file, "--model", "9", "--signal", "P21 square 1000 duty 25",
                              "--signal", "P28 square 12345.6 duty 80"})
                  .status,
              0);
    const std::string facts = info(file, {"--period", "3.8"}).out;
    EXPECT_THAT(facts, HasSubstr("\nP21: 996 edges, 1000.00"));
    EXPECT_THAT(facts, HasSubstr(" Hz, duty 25.0 %\n"));
    EXPECT_THAT(facts, HasSubstr("\nP28: 12297 edges, 12345."));
    EXPECT_THAT(facts, HasSubstr(" Hz, duty 80.0 %\n"));
}

TEST(facts_of_a_channel, of_one_sample_are_its_level)
{
    const std::vector<std::uint8_t> one{0x80};
    EXPECT_EQ(cli::facts_of(one, 7).high_part, 1);
    EXPECT_TRUE(cli::facts_of(one, 7).begins_high);
    EXPECT_EQ(cli::facts_of(one, 0).high_part, 0);
    EXPECT_FALSE(cli::facts_of(one, 0).samples_a_period);
}

TEST(facts_of_a_channel, count_whole_periods_from_rise_to_rise)
{
    const std::vector<std::uint8_t> samples{1, 0, 0, 1, 1, 0, 0, 0, 1, 0, 1, 1};
    const auto facts = cli::facts_of(samples, 0);
    EXPECT_EQ(facts.edges, 6);
    EXPECT_EQ(facts.samples_a_period, 3.5) << "rises at 3, 8 and 10";
    EXPECT_EQ(facts.duty, 3.0 / 7);
    EXPECT_EQ(facts.high_part, 6.0 / 12);
}

TEST(analyze_files, that_cannot_be_samples_are_refused_with_the_reason)
{
    const temp_folder folder;
    const std::pair<std::string, std::string> all[] = {
        {folder.path("none.bin"), "no such file"},
        {folder.path(""), "a directory where a file was expected"},
        {folder.write("empty.bin", ""), "empty where samples were expected"},
        {"/dev/zero", "a device where a file was expected"},
        {folder.write("long.bin", std::string(524289, 'x')),
         "524289 samples where at most 524288, 16 banks, were expected"},
    };
    for (const auto& [file, why] : all) {
        for (const std::vector<std::string>& arguments :
             {std::vector<std::string>{"info", file}, {"draw", file}, {"draw", file, "-o", folder.path("new.svg")}}) {
            std::vector<std::string> words = arguments;
            words.insert(words.begin(), "analyze");
            const auto result = command_inside(words);
            EXPECT_EQ(result.status, 1) << file;
            EXPECT_EQ(result.out, "");
            EXPECT_EQ(result.err, "tamrix: " + file + ": " + why + "\n");
        }
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("new.svg")));
}

TEST(analyze_files, that_end_within_a_bank_are_taken_and_noted)
{
    const temp_folder folder;
    const std::string file = folder.write("short.bin", std::string(32768 + 768, 'x'));
    const auto result = info(file);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "tamrix: note: " + file + ": 33536 samples, which ends 32000 before the end of a bank of 32768\n");
    EXPECT_THAT(result.out, HasSubstr(": 33536 samples, "));
    EXPECT_EQ(info(folder.write("all.bin", std::string(524288, 'x'))).err, "");
}

TEST(analyze_files, have_a_period_of_a_nanosecond_to_a_second)
{
    const temp_folder folder;
    const std::string file = folder.write("a.bin", some_samples());
    for (const std::string period : {"0", "0.0009", "-1", "x", "3.4us", "", "1000001", "1e3", "nan"}) {
        const auto result = info(file, {"--period", period});
        EXPECT_EQ(result.status, 2) << period;
        EXPECT_EQ(result.err,
                  "tamrix: --period " + period + ": a time from 0.001 to 1000000, in microseconds, is expected\n");
    }
    EXPECT_EQ(info(file, {"--period", "1000000"}).status, 0);
    EXPECT_EQ(info(file, {"--period", "0.001"}).status, 0);
}

TEST(analyze_files, help_lists_every_option)
{
    const std::string draw = command_inside({"analyze", "draw", "--help"}).out,
                      info = command_inside({"analyze", "info", "--help"}).out;
    for (const char* option : {"FILE", "--period US", "--language CODE", "Exit status: 0 done, 1 "}) {
        EXPECT_THAT(draw, HasSubstr(option));
        EXPECT_THAT(info, HasSubstr(option));
    }
    for (const char* option : {"-o,--output PICTURE.svg", "--from SAMPLE", "--samples N"})
        EXPECT_THAT(draw, HasSubstr(option));
    EXPECT_THAT(info, HasSubstr("--json"));
}

TEST(analyze_files, and_frequencies_on_the_page_are_real) { expect_real_examples("instruments.md", 7, "counter.svg"); }

}  // namespace
}  // namespace tamrix::tests
