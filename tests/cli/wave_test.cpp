// tamrix wave: what it prints and refuses.
#include "cli/command_inside.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;

TEST(wave_command, generate_prints_what_was_asked_shown_sent_and_given)
{
    const std::pair<std::vector<std::string>, std::string> table[] = {
        {{"1000"}, "asked 1000\nshown 1000\ndivider 232 3 0\ngiven 1000.000 Hz\ndeviation +0.0 ppm\n"},
        {{"600000"}, "asked 600000\nshown 1000000\ndivider 192 39 9\ngiven 1000000.000 Hz\ndeviation +666666.7 ppm\n"},
        {{"0010000", "--model", "9", "--route", "devobj"},
         "asked 0010000\nshown 9900\ndivider 53 0 0\ngiven 9955.752 Hz\ndeviation -4424.8 ppm\n"},
        // 200 ticks of 8/9 us at 18 MHz: (2 * 197 + 7) cycles of 12 clocks.
        {{"2812", "--model", "5"},
         "asked 2812\nshown 2400\ndivider 197 0 0\ngiven 2493.766 Hz\ndeviation -113170.1 ppm\n"},
        {{"125000", "--model", "1", "--route", "devobj", "--wfig", "17"},
         "asked 125000\nshown 148000\ndivider 1 0 0\ngiven 125000.000 Hz\ndeviation +0.0 ppm\n"},
    };
    for (auto [arguments, printed] : table) {
        arguments.insert(arguments.begin(), {"wave", "generate"});
        const auto result = tamrix_command(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, printed);
        EXPECT_EQ(result.err, "");
    }
}

TEST(wave_command, a_frequency_of_0_is_no_signal_and_without_a_timer_an_error)
{
    const auto by_timer = command_inside({"wave", "generate", "0"});
    EXPECT_EQ(by_timer.status, 0);
    EXPECT_EQ(by_timer.out, "asked 0\nshown 0\ndivider 0 0 0\ngiven 0.000 Hz\ndeviation +0.0 ppm\n");
    EXPECT_EQ(by_timer.err, "tamrix: note: 0 Hz is no signal\n");
    const auto by_loop = command_inside({"wave", "generate", "0", "--model", "39"});
    EXPECT_EQ(by_loop.status, 2);
    EXPECT_EQ(by_loop.out, "");
    EXPECT_EQ(by_loop.err, "tamrix: HZ 0: a signal of 0 Hz has no period\n");
}

TEST(wave_command, meter_prints_each_reading_and_their_mean_and_range)
{
    const auto result = tamrix_command({"wave", "meter", "--signal", "P23 square 440 duty 10", "--count", "6"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "000439\n000439\n000441\n000439\n000440\n000441\n"
                          "mean 439.8 Hz\nlowest 439 Hz\nhighest 441 Hz\n");
    EXPECT_EQ(result.err, "");
}

TEST(wave_command, meter_without_a_signal_reads_nothing_five_times)
{
    for (const char* route : {"usb", "devobj"}) {
        const auto result = command_inside({"wave", "meter", "--route", route});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, "000000\n000000\n000000\n000000\n000000\nmean 0.0 Hz\nlowest 0 Hz\nhighest 0 Hz\n");
    }
}

TEST(wave_command, a_programmer_that_does_not_answer_is_status_3)
{
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"wave", "meter", "--fault", "no answer"},
          {"wave", "meter", "--from-generator", "100", "--fault", "no answer"},
          {"wave", "generate", "100", "--fault", "no answer"}}) {
        const auto result = command_inside(arguments);
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "tamrix: the programmer does not answer; check its cable and its supply\n");
    }
}

TEST(wave_command, a_signal_where_the_generators_lead_goes_is_refused)
{
    const auto result = command_inside({"wave", "meter", "--from-generator", "100", "--signal", "P23 high"});
    EXPECT_EQ(result.status, 2) << "a lead is at that pin";
    EXPECT_THAT(result.err, HasSubstr("--signal lead 23 P23: "));
}

struct refused_wave {
    std::vector<std::string> arguments;
    std::string text;
};

TEST(wave_command, wrong_usage_is_refused_with_the_place_and_the_reason)
{
    const std::string range = "\" is no frequency from 0 to 2147483647 Hz";
    const std::vector<refused_wave> all{
        {{"generate", ""}, "HZ : \"" + range},
        {{"generate", "2147483648"}, "HZ 2147483648: \"2147483648" + range},
        {{"generate", "9999999999"}, "HZ 9999999999: \"9999999999" + range},
        {{"generate", "1.5k"}, "HZ 1.5k: digits alone are expected, in hertz"},
        {{"generate", "-5"}, "HZ -5: digits alone are expected, in hertz"},
        {{"generate"}, "HZ is required"},
        {{"generate", "1", "--signal", "P23 high"}, "--signal: no such option (see tamrix wave generate --help)"},
        {{"meter", "--from-generator", "0", "--model", "1"}, "--from-generator 0: a signal of 0 Hz has no period"},
        {{"meter", "--from-generator", "x"}, "--from-generator x: digits alone are expected, in hertz"},
        {{"meter", "--count", "0"}, "--count 0: a number from 1 to 1000 is expected"},
        {{"meter", "--count", "1001"}, "--count 1001: a number from 1 to 1000 is expected"},
        {{"meter", "--signal", "P23 squre 440"},
         "--signal P23 squre 440: signal \"P23 squre 440\", column 5: \"squre\" where a pin, \"square\", \"counter\", "
         "\"pulse\", \"uart\", \"i2c\", \"spi\", \"noise\", \"file\", \"high\" or \"low\" was expected"},
        {{"meter", "--signal", "P23 high", "--signal", "P23 low"},
         "--signal P23 low: signal \"P23 low\", column 1: P23 has a signal already"},
        {{"meter", "--model", "100"}, "--model 100: a number from 0 to 99 is expected"},
        {{"meter", "--wfig", "256"}, "--wfig 256: a number from 0 to 255 is expected"},
        {{"meter", "--route", "lpt"}, "--route lpt: usb or devobj is expected"},
        {{"meter", "--transcript", ""}, "--transcript: the name of a file is expected"},
        {{"meter", "--transcript", "/nowhere/at/all"},
         "--transcript /nowhere/at/all: the folder /nowhere does not exist"},
        {{"meter", "--transcript", "/dev/full"}, "--transcript /dev/full: No space left on device"},
        {{}, "A subcommand is required"},
    };
    for (const refused_wave& one : all) {
        std::vector<std::string> arguments = one.arguments;
        arguments.insert(arguments.begin(), "wave");
        const auto result = command_inside(arguments);
        EXPECT_EQ(result.status, 2) << one.text;
        EXPECT_EQ(result.out, "") << one.text;
        EXPECT_EQ(result.err, "tamrix: " + one.text + "\n");
    }
}

TEST(wave_command, a_disk_that_is_full_is_a_failure)
{
    const auto result = tamrix_command({"wave", "generate", "1000"}, {.standard_output = "/dev/full"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: standard output: cannot be written\n");
}

TEST(wave_command, the_help_lists_every_option)
{
    const std::string meter = command_inside({"wave", "meter", "--help"}).out,
                      generate = command_inside({"wave", "generate", "--help"}).out;
    for (const char* option :
         {"--model N", "--route usb|devobj", "--wfig N", "--fault TEXT", "--transcript FILE", "--language CODE",
          "Exit status: 0 done, 1 failed, 2 rejected values or wrong usage, 3 "}) {
        EXPECT_THAT(meter, HasSubstr(option));
        EXPECT_THAT(generate, HasSubstr(option));
    }
    for (const char* option : {"--count N", "--from-generator HZ", "--signal TEXT"})
        EXPECT_THAT(meter, HasSubstr(option));
}

}  // namespace
}  // namespace tamrix::tests
