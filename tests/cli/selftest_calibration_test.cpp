// The calibrations of tamrix selftest, with a person who types readings.
#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using testing::EndsWith;
using testing::StartsWith;

command_result calibrate(const std::string& typed, std::vector<std::string> more = {}, const std::string& folder = {})
{
    more.insert(more.begin(), {"selftest", "--item", "1"});
    return tamrix_command(more, {.folder = folder, .standard_input = typed});
}

TEST(selftest_calibration, says_what_is_at_which_pin_and_compares_the_reading)
{
    const auto result = calibrate("3.021\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "Note: Do NOT insert any device in the socket!\n"
                          "Note! Need AC adaptor!\n"
                          "3.000 V at pin 23 of the socket, ground at pin 24\n"
                          "measure it, type the reading in volts and press Enter; Enter alone ends without a reading\n"
                          "VCC Vol. Cal. (3V): set value 3.000 V, reading 3.021 V, deviation +21.0 mV (+0.70 %)\n");
    EXPECT_EQ(result.err, "");
}

TEST(selftest_calibration, a_reading_may_be_too_low_or_of_the_wrong_sign)
{
    EXPECT_THAT(calibrate("2.97\n").out, EndsWith("reading 2.970 V, deviation -30.0 mV (-1.00 %)\n"));
    EXPECT_THAT(calibrate("2.99996\n").out, EndsWith("reading 3.000 V, deviation +0.0 mV (+0.00 %)\n"));
    EXPECT_THAT(calibrate(" -3 \r\n").out, EndsWith("reading -3.000 V, deviation -6000.0 mV (-200.00 %)\n"));
}

TEST(selftest_calibration, enter_alone_and_the_end_of_input_take_no_reading)
{
    for (const char* typed : {"\n", "  \n", ""}) {
        const auto result = calibrate(typed);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, EndsWith("\nVCC Vol. Cal. (3V): set value 3.000 V, no reading\n"));
        EXPECT_EQ(result.err, "");
    }
}

TEST(selftest_calibration, a_last_line_without_its_end_is_a_reading)
{
    EXPECT_THAT(calibrate("3.1").out, EndsWith("reading 3.100 V, deviation +100.0 mV (+3.33 %)\n"));
}

TEST(selftest_calibration, what_is_no_number_is_asked_again)
{
    for (const std::string typed : {"3,021", "3.0 V", "three", "nan", "inf", "1e2", "0x3", "1001", "-1001", "3 4"}) {
        const auto result = calibrate(typed + "\n3.3\n");
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "tamrix: \"" + typed + "\" where a reading in volts was expected, for instance 3.021\n");
        EXPECT_THAT(result.out, EndsWith("reading 3.300 V, deviation +300.0 mV (+10.00 %)\n"));
    }
    EXPECT_THAT(calibrate("three\n").out, EndsWith(", no reading\n")) << "the input ends";
}

TEST(selftest_calibration, the_voltage_stays_on_until_the_reading_and_is_safe_after_it)
{
    const temp_folder folder;
    EXPECT_EQ(calibrate("3\n", {"--transcript", "calls.txt"}, folder.path("")).err, "") << "no hazard";
    const std::string calls = read_text(folder.path("calls.txt"));
    const auto on = calls.find("vccpin 2 1"), safe = calls.find("setvpp 5000 0");
    ASSERT_NE(on, std::string::npos) << calls;
    ASSERT_NE(safe, std::string::npos) << calls;
    EXPECT_LT(on, safe);
    EXPECT_EQ(calls.substr(on, safe - on).find("hwreset"), std::string::npos) << calls;
    const auto off = calls.find("hwreset", safe);
    ASSERT_NE(off, std::string::npos) << calls;
    EXPECT_NE(calls.find("setvpp 5000 0", off), std::string::npos)
        << "once more as the dialog closes, so that the first was Stop";
}

TEST(selftest_calibration, says_that_the_programmer_does_not_answer_and_asks_for_no_reading)
{
    for (const std::string route : {"usb", "devobj"}) {
        const auto result = calibrate("3\n", {"--route", route, "--fault", "no answer"});
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, EndsWith("\nVCC Vol. Cal. (3V): not carried out: the programmer does not answer\n"));
        EXPECT_THAT(result.out, testing::Not(testing::HasSubstr("press Enter")));
        EXPECT_EQ(result.err, "tamrix: check the cable and the supply of the programmer, then test again\n");
    }
    EXPECT_THAT(calibrate("3\n", {"--json", "--fault", "no answer"}).out,
                testing::HasSubstr("\"item\": 1, \"name\": \"VCC Vol. Cal. (3V)\", \"result\": \"not answered\""));
}

TEST(selftest_calibration, json_leaves_the_dialogue_to_standard_error)
{
    const auto result = calibrate("3.021\n", {"--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "{\"model\": 40, \"item\": 1, \"name\": \"VCC Vol. Cal. (3V)\", \"status\": [\"Note: Do NOT insert "
              "any device in the socket!\", \"Note! Need AC adaptor!\"], \"pin\": 23, \"ground_pin\": 24, "
              "\"set_millivolts\": 3000, \"reading_millivolts\": 3021.0, \"deviation_millivolts\": 21.0, "
              "\"deviation_percent\": 0.70}\n");
    EXPECT_THAT(result.err, StartsWith("tamrix: note: 3.000 V at pin 23 of the socket, ground at pin 24\n"));
    EXPECT_THAT(calibrate("", {"--json"}).out, EndsWith("\"set_millivolts\": 3000}\n"));
}

}  // namespace
}  // namespace tamrix::tests
