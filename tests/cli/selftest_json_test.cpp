// tamrix selftest --json, read by a JSON reader that is not ours.
#include "cli/json.h"
#include "cli/run_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;

/// What a Python expression on the object `d` prints; the reader's complaint where it is no JSON.
std::string read_by_python(const std::string& text, const std::string& expression)
{
    const std::string program = "import json, sys; sys.stdout.reconfigure(encoding='utf-8'); "
                                "d = json.loads(sys.stdin.buffer.read().decode('utf-8')); print(" +
                                expression + ")";
    const auto result = run_program({"python3", "-c", program}, {.standard_input = text});
    return result.out + result.err;
}

std::string run_json(std::vector<std::string> arguments, int status)
{
    arguments.insert(arguments.begin(), {"selftest", "--json"});
    const auto result = tamrix_command(arguments);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out.find('\n'), result.out.size() - 1) << "one line";
    return result.out;
}

TEST(json, every_text_comes_back)
{
    const std::string text = "a \"quote\", a \\ and \t\n\x01\x1F \xC3\xA4 \x7F/";
    EXPECT_EQ(read_by_python(cli::json::string(text), "d, end=''"), text);
    EXPECT_EQ(cli::json::string("\n\""), "\"\\u000a\\\"\"");
}

TEST(json, objects_leave_out_what_is_empty_and_arrays_may_be_empty)
{
    EXPECT_EQ(cli::json::object({{"a", "1"}, {"b", ""}, {"c", cli::json::array({})}}), "{\"a\": 1, \"c\": []}");
    EXPECT_EQ(cli::json::object({}), "{}");
    EXPECT_EQ(cli::json::array({"1", "\"x\""}), "[1, \"x\"]");
}

TEST(selftest_json, a_failed_run_is_one_object)
{
    const std::string text = run_json({"--fault", "vcc driver 7 dead", "--fault", "ground driver 9 dead", "--fault",
                                       "bad ram bank 3", "--model", "9", "--fault", "bad register 3 of board 5"},
                                      1);
    EXPECT_EQ(read_by_python(text, "d['model'], d['route'], d['wfig'], d['item'], d['name'], d['result']"),
              "9 usb 0 0 System Test failed\n");
    EXPECT_EQ(read_by_python(text, "d['status'][-1]"), "System Test fail!\n");
    EXPECT_EQ(read_by_python(text, "[(f['stage'], f.get('pin'), f.get('block')) for f in d['faults']]"),
              "[('RAM', None, 3), ('VCC driver', 7, None)]\n");
    EXPECT_EQ(read_by_python(text, "sorted(d['faults'][1].items())"),
              "[('bit', 2), ('driven_pin', 7), ('expected', 1), ('pin', 7), ('port', 4), ('read', 0), ('stage', 'VCC "
              "driver'), ('text', 'pin 7 (port 4 bit 2): VCC driver: expected high, read low')]\n");
    EXPECT_EQ(read_by_python(text, "[f['pin'] for f in d['not_shown']]"), "[9]\n");
    EXPECT_EQ(
        read_by_python(text, "d['not_tested'][0]['stage'], d['not_tested'][0]['pins'], d['not_tested'][0]['reason']"),
        "input 8 only generation 17 reads the outermost port\n");
}

TEST(selftest_json, a_bad_register_is_told_with_its_board)
{
    const std::string text = run_json({"--model", "9", "--fault", "bad register 2 of board 3"}, 1);
    EXPECT_EQ(read_by_python(text, "[(f['board'], f['register'], 'pin' in f) for f in d['faults']]"),
              "[(3, 2, False)]\n");
}

TEST(selftest_json, what_could_not_be_tested_is_an_object_too)
{
    const std::string text = run_json({"--route", "devobj", "--wfig", "17", "--fault", "no answer"}, 3);
    EXPECT_EQ(read_by_python(text, "d['result'], d['route'], d['wfig'], d['faults'], d['not_tested']"),
              "not answered devobj 17 [] []\n");
    EXPECT_EQ(read_by_python(run_json({"--item", "6", "--socket", "empty"}, 3), "d['result'], d['item']"),
              "no test board 6\n");
    EXPECT_EQ(read_by_python(run_json({"--fault", "lost reply 3"}, 3), "d['result']"), "communication error\n");
    EXPECT_EQ(read_by_python(run_json({"--fault", "vcc driver 7 dead", "--on-fault", "stop"}, 1), "d['result']"),
              "stopped\n");
    EXPECT_EQ(read_by_python(run_json({}, 0), "d['result'], d['status'][-1]"), "passed System Test OK!\n");
}

TEST(selftest_json, texts_of_every_script_are_read)
{
    EXPECT_EQ(
        read_by_python(run_json({"--language", "zh-cn"}, 0), "d['status'][-1].endswith('OK!'), d['name'].isascii()"),
        "True False\n");
}

TEST(selftest_json, the_list_is_one_object)
{
    const std::string text = run_json({"--list", "--model", "15"}, 0);
    EXPECT_EQ(read_by_python(text, "d['model'], [i['item'] for i in d['items'] if not i['offered']]"), "15 [3, 5]\n");
    EXPECT_EQ(read_by_python(text, "d['items'][1]['name'], d['items'][1]['what']"),
              "VCC Vol. Cal. (5V) 5.000 V at pin 21 of the socket, ground at pin 24\n");
}

}  // namespace
}  // namespace tamrix::tests
