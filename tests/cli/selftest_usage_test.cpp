// tamrix selftest: transcripts, help, the page, wrong usage.
#include "cli/page_examples.h"
#include "cli/selftest_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;

TEST(selftest_usage, the_transcript_holds_the_calls_of_the_programmer)
{
    const temp_folder folder;
    const auto result = selftest({"--route", "devobj", "--transcript", "calls.txt"}, {.folder = folder.path("")});
    EXPECT_EQ(result.status, 0);
    const std::string calls = read_text(folder.path("calls.txt"));
    EXPECT_THAT(calls, HasSubstr(" ms  hwreset"));
    EXPECT_THAT(calls, HasSubstr(" ms  boardsel2"));
    const auto silent = selftest({"--route", "devobj", "--fault", "no answer", "--transcript", "silent.txt"},
                                 {.folder = folder.path("")});
    EXPECT_EQ(silent.status, 3);
    EXPECT_THAT(read_text(folder.path("silent.txt")), HasSubstr(" ms  hwinit"));
}

TEST(selftest_usage, a_transcript_that_cannot_be_written_is_refused)
{
    const auto nowhere = selftest({"--transcript", "/nowhere/at/all"});
    EXPECT_EQ(nowhere.status, 2);
    EXPECT_EQ(nowhere.out, "");
    EXPECT_EQ(nowhere.err, "tamrix: --transcript /nowhere/at/all: the folder /nowhere does not exist\n");
    const auto full = selftest({"--route", "devobj", "--fault", "no answer", "--transcript", "/dev/full"});
    EXPECT_EQ(full.status, 2);
    EXPECT_EQ(full.err, "tamrix: --transcript /dev/full: No space left on device\n");
}

TEST(selftest_usage, the_help_lists_every_option)
{
    const auto result = selftest({"--help"});
    EXPECT_EQ(result.status, 0);
    for (const char* option :
         {"--item N", "--list", "--on-fault continue|stop", "--json", "--brief", "--transcript FILE", "--model N",
          "--route usb|devobj", "--wfig N", "--socket \"test board\"|empty", "--fault TEXT", "--language CODE",
          "Exit status: 0 passed, 1 failed, 2 rejected values or wrong usage, 3 "}) {
        EXPECT_THAT(result.out, HasSubstr(option));
    }
}

TEST(selftest_usage, the_examples_on_the_page_are_real) { expect_real_examples("self-test.md", 3); }

struct refused_run {
    std::vector<std::string> arguments;
    std::string text;
};

TEST(selftest_usage, wrong_usage_is_refused_before_anything_is_tested)
{
    const std::vector<refused_run> all{
        {{"--item", "x"}, "--item x: a number from 0 on is expected; tamrix selftest --list shows the items"},
        {{"--item", "-1"}, "--item -1: a number from 0 on is expected; tamrix selftest --list shows the items"},
        {{"--item", "7"}, "--item 7: model 40 has the items 0 to 6; tamrix selftest --list --model 40 shows them"},
        {{"--item", "3", "--model", "15"},
         "--item 3: on model 15 this item cannot be chosen; tamrix selftest --list --model 15 shows them"},
        {{"--model", "100"}, "--model 100: a number from 0 to 99 is expected"},
        {{"--route", "parallel"}, "--route parallel: usb or devobj is expected"},
        {{"--wfig", "256"}, "--wfig 256: a number from 0 to 255 is expected"},
        {{"--wfig", "17x"}, "--wfig 17x: a number from 0 to 255 is expected"},
        {{"--socket", "7400"}, "--socket 7400: \"test board\" or empty is expected"},
        {{"--on-fault", "ask"}, "--on-fault ask: continue or stop is expected"},
        {{"--fault", "pin 3"}, "--fault pin 3: fault \"pin 3\": its end where \"open\" or \"stuck\" was expected"},
        {{"--transcript", ""}, "--transcript: the name of a file is expected"},
        {{"--list", "--item", "1"}, "--list and --item: only one of the two is expected"},
        {{"--list", "--socket", "empty"}, "--list and --socket: only one of the two is expected"},
        {{"--list", "--fault", "no answer"}, "--list and --fault: only one of the two is expected"},
        {{"--list", "--on-fault", "stop"}, "--list and --on-fault: only one of the two is expected"},
        {{"--list", "--transcript", "x"}, "--list and --transcript: only one of the two is expected"},
        {{"--list", "--brief"}, "--list and --brief: only one of the two is expected"},
        {{"--json", "--brief"}, "--json and --brief: only one of the two is expected"},
        {{"--fast"}, "--fast: no such option (see tamrix selftest --help)"},
    };
    for (const refused_run& one : all) {
        const auto result = selftest(one.arguments);
        EXPECT_EQ(result.status, 2) << one.text;
        EXPECT_EQ(result.out, "") << one.text;
        EXPECT_EQ(result.err, "tamrix: " + one.text + "\n");
    }
}

}  // namespace
}  // namespace tamrix::tests
