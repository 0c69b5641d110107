// tamrix analyze record: what is in the file, and what goes wrong.
#include "cli/analyze_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;

/// Whether the samples count up from 0, `rate` times a second, with `period` seconds a sample.
void expect_counter(const std::vector<std::uint8_t>& samples, double rate, double period)
{
    int compared = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double steps = static_cast<double>(i) * period * rate;
        if (std::abs(steps - std::round(steps)) < 1e-6) continue;  // an edge
        ++compared;
        if (samples[i] != static_cast<std::uint8_t>(steps)) {
            ADD_FAILURE() << "sample " << i;
            return;
        }
    }
    EXPECT_GT(compared, 30000);
}

TEST(analyze_record, samples_the_signals_with_the_period_of_the_model)
{
    struct recorded_by {
        std::vector<std::string> programmer;
        double period_us;
        std::string end;
    };
    const std::vector<recorded_by> all{
        {{}, 3.4, "131072 samples, 445.645 ms at 3.4 us a sample"},
        {{"--model", "9"}, 3.8, "131072 samples, 498.074 ms at 3.8 us a sample"},
        {{"--model", "9", "--wfig", "17"}, 3.5, "131072 samples, 458.752 ms at 3.5 us a sample"},
        {{"--model", "5", "--banks", "1"}, 4.7, "32768 samples, 154.010 ms at 4.7 us a sample"},
        {{"--banks", "16"}, 3.4, "524288 samples, 1782.579 ms at 3.4 us a sample"},
    };
    const temp_folder folder;
    const std::string file = folder.path("capture.bin");
    for (auto [arguments, period_us, end] : all) {
        arguments.insert(arguments.end(), {"--signal", "P21..P28 counter 70001"});
        const auto result = record_inside(file, arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, file + ": " + end + "\n");
        EXPECT_EQ(result.err, "");
        const auto samples = read_bytes(file);
        EXPECT_EQ(std::to_string(samples.size()), end.substr(0, end.find(' ')));
        expect_counter(samples, 70001, period_us * 1e-6);
    }
}

TEST(analyze_record, takes_a_recording_as_a_signal)
{
    const temp_folder folder;
    const std::string first = folder.path("first.bin"), again = folder.path("again.bin");
    EXPECT_EQ(record_inside(first, {"--signal", "P21..P28 noise 50000"}).status, 0);
    EXPECT_EQ(record_inside(again, {"--signal", "P21..P28 file " + first + " period 3.4"}).status, 0);
    EXPECT_EQ(read_bytes(again), read_bytes(first));
}

TEST(analyze_record, by_registers_takes_the_samples_as_fast_as_the_reads_go)
{
    const temp_folder folder;
    const std::string file = folder.path("capture.bin");
    const auto result = record_inside(
        file, {"--route", "devobj", "--model", "9", "--signal", "P21 square 1000", "--signal", "P22 low"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, file + ": 131072 samples, 393.219 ms at 3.00002 us a sample\n");
    const auto samples = read_bytes(file);
    int rises = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        EXPECT_EQ(samples[i] | 1, 0xFD);
        rises += (samples[i] & 1) > (samples[i - 1] & 1) ? 1 : 0;
    }
    EXPECT_NEAR(rises, 393, 1);
}

TEST(analyze_record, more_banks_than_registers_record_are_noted)
{
    const temp_folder folder;
    const std::string file = folder.path("capture.bin");
    const auto result = record_inside(file, {"--route", "devobj", "--banks", "5"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "tamrix: note: this route records 131073 samples; those after them are 0\n");
    const auto samples = read_bytes(file);
    EXPECT_EQ(samples.size(), 163840u);
    EXPECT_EQ(samples[131072], 0xFF);
    EXPECT_EQ(samples[131073], 0);
}

TEST(analyze_record, banks_that_the_programmer_does_not_have_are_noted)
{
    const temp_folder folder;
    const std::string file = folder.path("capture.bin");
    const auto result = record_inside(file, {"--model", "9", "--banks", "6", "--signal", "P21..P28 counter 1000"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "tamrix: note: there is no memory bank 4; from there on all samples are FF\n");
    const auto samples = read_bytes(file);
    EXPECT_EQ(samples.size(), 6u * 32768);
    EXPECT_EQ(samples[4 * 32768 - 1], 498 % 256) << "the last one, after 498.07 ms";
    EXPECT_EQ(samples[4 * 32768], 0xFF);
}

TEST(analyze_record, no_banks_are_an_empty_file)
{
    const temp_folder folder;
    const auto result = record_inside(folder.path("none.bin"), {"--banks", "0"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(read_bytes(folder.path("none.bin")).empty());
}

TEST(analyze_record, begins_with_the_level_of_the_trigger_pin)
{
    const temp_folder folder;
    const std::string file = folder.path("capture.bin");
    for (const std::string route : {"usb", "devobj"}) {
        const std::vector<std::string> there{
            "--route", route,      "--trigger",          "ext",      "--pin",
            "P28",     "--signal", "P28 pulse 0.5 0.51", "--signal", "P21 pulse 0.2 0.3 low"};
        std::vector<std::string> high = there;
        high.insert(high.end(), {"--level", "high"});
        EXPECT_EQ(record_inside(file, high).status, 0);
        EXPECT_EQ(read_bytes(file).front(), 0xFF) << "in the pulse";
        EXPECT_EQ(read_bytes(file).back(), 0x7F) << "after it";
        EXPECT_EQ(record_inside(file, there).status, 0);
        EXPECT_EQ(read_bytes(file).front(), 0x7F) << "low is the level unless another is given";
    }
}

TEST(analyze_record, waits_for_the_trigger_as_long_as_it_is_told)
{
    const temp_folder folder;
    const auto status_of = [&](const std::string& wait, const std::string& pulse, const std::string& route) {
        return record_inside(folder.path("a.bin"), {"--trigger", "ext", "--level", "high", "--wait", wait, "--signal",
                                                    "P21 pulse " + pulse, "--route", route})
            .status;
    };
    EXPECT_EQ(status_of("5", "4.9 5", "usb"), 0) << "the recording itself takes longer";
    EXPECT_EQ(status_of("2", "4.7 5", "usb"), 3);
    EXPECT_EQ(status_of("1", "0.9 1", "devobj"), 0);
    EXPECT_EQ(status_of("1", "1.6 2", "devobj"), 3);
    EXPECT_EQ(record_inside(folder.path("a.bin"), {"--wait", "1"}).status, 0) << "without a trigger too";
}

struct failed_record {
    std::vector<std::string> arguments;
    int status;
    std::string text;
};

TEST(analyze_record, a_recording_that_fails_leaves_the_old_file)
{
    const temp_folder folder;
    const std::string file = folder.write("old.bin", "old");
    const std::string kept = "; " + file + " was not written";
    const std::vector<failed_record> all{
        {{"--fault", "no answer"}, 3, "the programmer does not answer; check its cable and its supply"},
        {{"--fault", "no answer", "--route", "devobj"},
         3,
         "the programmer does not answer; check its cable and its supply"},
        {{"--fault", "bank 3 never comes"}, 1, "Record Error! The samples did not come" + kept},
        {{"--fault", "lost reply"}, 3, "the programmer did not say within 10 s that it has recorded" + kept},
        {{"--fault", "wrong reply 85", "--wait", "3"},
         3,
         "the programmer did not say within 3 s that it has recorded" + kept},
        {{"--trigger", "ext", "--fault", "no trigger", "--level", "high"}, 3, "P21 was not high within 10 s" + kept},
        {{"--trigger", "ext", "--pin", "P28", "--wait", "2"}, 3, "P28 was not low within 2 s" + kept},
        {{"--trigger", "ext", "--pin", "P28", "--wait", "1", "--route", "devobj"},
         3,
         "P28 was not low within 1 s" + kept},
        {{"--language", "pl", "--fault", "bank 0 never comes"},
         1,
         "B\u0142\u0105d rejestracji! The samples did not come" + kept},
    };
    for (const failed_record& one : all) {
        const auto result = record_inside(file, one.arguments);
        EXPECT_EQ(result.status, one.status) << one.text;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "tamrix: " + one.text + "\n");
        EXPECT_EQ(read_text(file), "old") << one.text;
    }
}

TEST(analyze_record, wrong_usage_is_refused_before_anything_is_recorded)
{
    const temp_folder folder;
    const std::vector<failed_record> all{
        {{"--banks", "17"}, 2, "--banks 17: a number from 0 to 16 is expected"},
        {{"--banks", "-1"}, 2, "--banks -1: a number from 0 to 16 is expected"},
        {{"--banks", "4x"}, 2, "--banks 4x: a number from 0 to 16 is expected"},
        {{"--trigger", "edge"}, 2, "--trigger edge: in or ext is expected"},
        {{"--level", "1"}, 2, "--level 1: high or low is expected"},
        {{"--pin", "P20"}, 2, "--pin P20: one of P21 to P28 is expected"},
        {{"--pin", "P29"}, 2, "--pin P29: one of P21 to P28 is expected"},
        {{"--pin", "21"}, 2, "--pin 21: one of P21 to P28 is expected"},
        {{"--pin", "P"}, 2, "--pin P: one of P21 to P28 is expected"},
        {{"--wait", "0"}, 2, "--wait 0: a number from 1 to 1000 is expected"},
        {{"--wait", "1001"}, 2, "--wait 1001: a number from 1 to 1000 is expected"},
        {{"--route", "lpt"}, 2, "--route lpt: usb or devobj is expected"},
        {{"--signal", "P21 square"},
         2,
         "--signal P21 square: signal \"P21 square\", column 11: its end where a number from 0.001 to 1000000 was "
         "expected"},
        {{"--signal", "chip 9999 1=P21"},
         2,
         "--signal chip 9999 1=P21: signal \"chip 9999 1=P21\", column 6: there is no chip \"9999\""},
        {{"--fault", "pin 3"}, 2, "--fault pin 3: fault \"pin 3\": its end where \"open\" or \"stuck\" was expected"},
        {{"--transcript", "/nowhere/at/all"}, 2, "--transcript /nowhere/at/all: the folder /nowhere does not exist"},
    };
    for (const failed_record& one : all) {
        const auto result = record_inside(folder.path("new.bin"), one.arguments);
        EXPECT_EQ(result.status, one.status) << one.text;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "tamrix: " + one.text + "\n");
        EXPECT_FALSE(std::filesystem::exists(folder.path("new.bin"))) << one.text;
    }
    EXPECT_EQ(command_inside({"analyze", "record"}).err, "tamrix: --output is required\n");
    EXPECT_EQ(record_inside("").err, "tamrix: -o: the name of a file is expected\n");
    EXPECT_EQ(command_inside({"analyze"}).err, "tamrix: A subcommand is required\n");
}

TEST(analyze_record, the_help_lists_every_option)
{
    const std::string help = command_inside({"analyze", "record", "--help"}).out;
    for (const char* option :
         {"-o,--output FILE", "--banks N", "--trigger in|ext", "--level high|low", "--pin P21..P28", "--wait SECONDS",
          "--transcript FILE", "--model N", "--route usb|devobj", "--wfig N", "--fault TEXT", "--signal TEXT",
          "--language CODE", "Exit status: 0 recorded, 1 "})
        EXPECT_THAT(help, HasSubstr(option));
}

}  // namespace
}  // namespace tamrix::tests
