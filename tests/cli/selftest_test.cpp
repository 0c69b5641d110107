// tamrix selftest: runs, verdicts, exit statuses.
#include "cli/selftest_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::size_t count_of(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

const std::string advice = "tamrix: check the cable and the supply of the programmer, then test again\n";

TEST(selftest, a_sound_programmer_passes_on_both_routes)
{
    for (const std::string route : {"usb", "devobj"}) {
        const auto result = selftest({"--wfig", "17", "--route", route});
        EXPECT_EQ(result.status, 0) << route;
        EXPECT_THAT(result.out, StartsWith("Note: Do NOT insert any device in the socket!\n.Test RAM .....\n"))
            << route;
        EXPECT_THAT(result.out, HasSubstr("\nSystem Test OK!\n")) << route;
        EXPECT_THAT(result.out, Not(HasSubstr("fault:"))) << route;
        EXPECT_EQ(result.err, "") << route;
    }
}

TEST(selftest, a_pass_says_what_was_not_tested_and_why)
{
    const auto result = selftest({});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, EndsWith("System Test OK!\n"
                                     "System Test: passed, as far as it was tested\n"
                                     "input: 8 pins not tested (only generation 17 reads the outermost port)\n"
                                     "VPP driver: 8 pins not tested (only generation 17 reads the outermost port)\n"
                                     "VCC driver: 8 pins not tested (only generation 17 reads the outermost port)\n"
                                     "GND driver: 8 pins not tested (only generation 17 reads the outermost port)\n"
                                     "register: not tested (this model has no such test)\n"));
    EXPECT_THAT(selftest({"--model", "9", "--wfig", "17"}).out, EndsWith("System Test OK!\nSystem Test: passed\n"));
}

TEST(selftest, a_brief_run_is_its_faults_and_its_verdict)
{
    EXPECT_EQ(selftest({"--brief"}).out, "System Test: passed, as far as it was tested\n");
    const auto broken = selftest({"--brief", "--fault", "vcc driver 7 dead", "--fault", "ground driver 9 dead"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(broken.out, "fault: pin 7 (port 4 bit 2): VCC driver: expected high, read low\n"
                          "System Test: failed, 1 fault\n");
    EXPECT_EQ(selftest({"--brief", "--item", "6", "--socket", "empty"}).out,
              "Output Test: not carried out: no test board in the socket\n");
}

TEST(selftest, an_empty_status_is_no_line) { EXPECT_THAT(selftest({}).out, Not(HasSubstr("\n\n"))); }

TEST(selftest, a_dead_driver_is_told_with_its_pin_and_fails)
{
    const auto result = selftest({"--fault", "vcc driver 7 dead"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("\nVCC Output is LOW!\n"));
    EXPECT_THAT(result.out, HasSubstr("\nSystem Test fail!\n"
                                      "fault: pin 7 (port 4 bit 2): VCC driver: expected high, read low\n"
                                      "System Test: failed, 1 fault\n"));
    EXPECT_EQ(result.err, "");
}

TEST(selftest, several_faults_are_told_one_a_line)
{
    const auto result = selftest({"--fault", "vcc driver 7 dead", "--fault", "vpp driver 12 dead"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("fault: pin 12 (port 3 bit 3): VPP driver: expected high, read low\n"
                                      "fault: pin 7 (port 4 bit 2): VCC driver: expected high, read low\n"
                                      "System Test: failed, 2 faults\n"));
}

TEST(selftest, on_fault_stop_ends_at_the_first_one)
{
    const std::vector<std::string> faults{"--fault", "vcc driver 7 dead", "--fault", "vpp driver 12 dead",
                                          "--on-fault"};
    auto stopping = faults, going_on = faults;
    stopping.push_back("stop");
    going_on.push_back("continue");
    const auto stopped = selftest(stopping);
    EXPECT_EQ(stopped.status, 1);
    EXPECT_EQ(count_of(stopped.out, "fault: "), 1u);
    EXPECT_THAT(stopped.out, HasSubstr("System Test fail!\n"));
    EXPECT_THAT(stopped.out, HasSubstr("System Test: failed, stopped after 1 fault\n"));
    EXPECT_EQ(count_of(selftest(going_on).out, "fault: "), 2u);
}

TEST(selftest, bad_ram_is_told_but_fails_no_run)
{
    const auto result = selftest({"--fault", "bad ram bank 3"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("\n RAM level= 15\n"));
    EXPECT_THAT(result.out, HasSubstr("\nfault: RAM block 3: expected "));
    EXPECT_THAT(result.out, HasSubstr("\nSystem Test: passed, as far as it was tested; faults that fail no run: 1\n"));
    EXPECT_THAT(selftest({"--fault", "bad ram bank 3", "--fault", "bad ram bank 4"}).out,
                HasSubstr("; faults that fail no run: 2\n"));
}

TEST(selftest, a_ground_fault_is_told_as_one_that_does_not_count)
{
    const auto result = selftest({"--fault", "ground driver 7 dead"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out,
                HasSubstr("\nseen, does not count: pin 7 (port 4 bit 2): GND driver: expected low, read high\n"));
}

TEST(selftest, a_programmer_that_does_not_answer_could_not_be_tested)
{
    const auto by_registers = selftest({"--route", "devobj", "--fault", "no answer"});
    EXPECT_EQ(by_registers.status, 3);
    EXPECT_EQ(by_registers.out, "Note: Do NOT insert any device in the socket!\n"
                                "System Test: not carried out: the programmer does not answer\n");
    EXPECT_EQ(by_registers.err, advice);
    const auto by_usb = selftest({"--fault", "no answer"});
    EXPECT_EQ(by_usb.status, 3);
    EXPECT_THAT(by_usb.out, HasSubstr("\nCommunication error!\n"));
    EXPECT_THAT(by_usb.out, HasSubstr("\nSystem Test: not carried out: a reply did not come\n"));
    EXPECT_EQ(by_usb.err, advice);
}

TEST(selftest, a_silent_programmer_with_a_connector_is_told_although_bad_memory_fails_no_run)
{
    for (const char* route : {"usb", "devobj"}) {
        const auto result = selftest({"--model", "11", "--route", route, "--fault", "no answer"});
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, HasSubstr("\nSystem Test: not carried out: the programmer does not answer\n"));
        EXPECT_EQ(result.err, advice);
    }
    EXPECT_THAT(selftest({"--model", "11", "--fault", "no answer"}).out,
                HasSubstr("\nfault: RAM block 0: could not be tested\n"));
}

TEST(selftest, lost_replies_are_a_communication_error)
{
    const auto result = selftest({"--fault", "lost reply 3"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, HasSubstr("System Test: not carried out: a reply did not come\n"));
    EXPECT_EQ(result.err, advice);
}

TEST(selftest, an_output_test_gets_the_test_board_by_itself)
{
    const auto result = selftest({"--item", "6"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, StartsWith("Note: Do NOT insert any device in the socket!\n"
                                       "Note!Need \"Test Board\" On Socket!\n.Output Test.....\n"));
    EXPECT_THAT(result.out, HasSubstr("\nOutput Test OK!\nOutput Test: passed"));
    EXPECT_EQ(selftest({"--item", "6", "--socket", "test board"}).out, result.out);
}

TEST(selftest, every_module_of_a_programmer_gets_a_test_board)
{
    // With "stop" too: the waits for the board to be moved are no faults.
    for (const char* item : {"6", "7"}) {
        for (const char* on_fault : {"continue", "stop"}) {
            const auto result = selftest({"--model", "39", "--item", item, "--on-fault", on_fault});
            EXPECT_EQ(result.status, 0) << result.out;
            EXPECT_THAT(result.out, HasSubstr(" OK! ( No 4"));
        }
    }
    const auto missing = selftest({"--model", "39", "--item", "6", "--fault", "test board of module 2 missing"});
    EXPECT_EQ(missing.status, 3);
    EXPECT_THAT(missing.out, HasSubstr(" On Socket! ( No 2"));
}

TEST(selftest, an_output_test_without_the_board_could_not_be_carried_out)
{
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--item", "6", "--socket", "empty"},
          std::vector<std::string>{"--item", "6", "--fault", "test board missing"}}) {
        const auto result = selftest(arguments);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, HasSubstr("\nOutput Test: not carried out: no test board in the socket\n"));
        EXPECT_EQ(result.err, "tamrix: put the test board into the socket, then test again\n");
    }
}

TEST(selftest, an_open_line_of_the_board_fails_the_output_test)
{
    const auto result = selftest({"--item", "6", "--fault", "test board line 7 open"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("\nOutput Test fail!\nfault: pin 42 (port 4 bit 5): output of pin 7: expected "));
}

TEST(selftest, the_board_in_the_socket_fails_a_system_test)
{
    EXPECT_EQ(selftest({"--socket", "test board"}).status, 1);
    EXPECT_EQ(selftest({"--socket", "empty"}).status, 0);
}

TEST(selftest, the_generation_decides_which_pins_are_read)
{
    EXPECT_THAT(selftest({"--fault", "input 2 stuck 0"}).out, Not(HasSubstr("fault: ")));
    EXPECT_THAT(selftest({"--wfig", "17", "--fault", "input 2 stuck 0"}).out,
                HasSubstr("\nfault: pin 2 (port 5 bit 1): input: expected high, read low\n"));
}

TEST(selftest, a_model_skips_what_it_does_not_have)
{
    const auto result = selftest({"--model", "1"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, EndsWith("VPP driver: 48 pins not tested (this model takes no part)\n"
                                     "VCC driver: 48 pins not tested (this model takes no part)\n"
                                     "GND driver: 48 pins not tested (this model takes no part)\n"));
}

TEST(selftest, list_shows_the_items_of_a_model)
{
    const auto result = selftest({"--list"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "0  System Test: tests the programmer itself, with nothing in the socket\n"
                          "1  VCC Vol. Cal. (3V): 3.000 V at pin 23 of the socket, ground at pin 24\n"
                          "2  VPP0 Vol. Cal. (12V): 12.000 V at pin 23 of the socket, ground at pin 24\n"
                          "3  VPP1 Vol. Cal. (12V): 12.000 V at pin 22 of the socket, ground at pin 24\n"
                          "4  VPP0 Vol. Cal. (25V): 25.000 V at pin 23 of the socket, ground at pin 24\n"
                          "5  VPP1 Vol. Cal. (25V): 25.000 V at pin 22 of the socket, ground at pin 24\n"
                          "6  Output Test: drives each line and reads it back, with the test board in the socket\n");
    EXPECT_THAT(selftest({"--list", "--model", "15"}).out,
                HasSubstr("\n3  VPP1 Vol. Cal. (12V): this model does not have it\n"));
}

TEST(selftest, pins_count_as_on_the_socket_or_the_connector_of_the_model)
{
    EXPECT_THAT(selftest({"--list", "--model", "11"}).out,
                HasSubstr("\n3  VPP Vol. Cal. (12V): 12.000 V at pin 3 of the connector, ground at pin 10\n"));
    EXPECT_THAT(selftest({"--list", "--model", "23"}).out,
                HasSubstr("\n1  VCC Vol. Cal. (5V): 5.000 V at pin 17 of the socket, ground at pin 20\n"));
}

TEST(selftest, messages_are_those_of_the_language)
{
    const auto result = selftest({"--language", "pl"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, Not(HasSubstr("System Test OK!")));
    EXPECT_THAT(result.out, HasSubstr(" OK!\n"));
}

}  // namespace
}  // namespace tamrix::tests
