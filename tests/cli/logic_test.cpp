// tamrix ttl and tamrix vectors.
#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace tamrix::tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string remedy = "; check the cable and the supply of the programmer, then test again\n";

/// A copy of the shipped library, and the command run on it.
class logic : public testing::Test {
protected:
    logic()
    {
        for (const std::string name : {"lib", "lib1"}) {
            std::filesystem::copy(TAMRIX_SAMPLES "/../" + name, folder.path(name));
        }
    }
    command_result run(std::vector<std::string> arguments)
    {
        return tamrix_command(arguments, {.folder = folder.path("")});
    }
    command_result ttl(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "ttl");
        arguments.insert(arguments.end(), {"--syspath", "./"});
        return run(arguments);
    }
    std::string library() const { return read_text(folder.path("lib/test.lib")); }

    const temp_folder folder;
};

TEST_F(logic, list_tells_the_names_in_the_order_of_the_directory)
{
    const auto result = ttl({"list"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith("4000\n4001\n"));
    EXPECT_GE(std::ranges::count(result.out, '\n'), 150);
}

TEST_F(logic, show_tells_pins_and_rows)
{
    const auto result = ttl({"show", "7400"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, StartsWith("pins: 14\nrows: "));
    EXPECT_THAT(result.out, HasSubstr("\nV0001 "));
}

TEST_F(logic, a_good_chip_passes_on_every_model_with_an_engine_of_its_own)
{
    for (const std::string model : {"15", "22", "23", "40", "50"}) {
        const auto result = ttl({"test", "74193", "--socket", "74193", "--model", model});
        EXPECT_EQ(result.out, "74193: Vector Test OK!\n") << model;
        EXPECT_EQ(result.err, "") << model;
        EXPECT_EQ(result.status, 0) << model;
    }
    EXPECT_EQ(ttl({"test", "74193", "--socket", "74193", "--route", "devobj"}).status, 0);
}

TEST_F(logic, every_failing_row_is_told_and_the_command_fails)
{
    const auto result = ttl({"test", "7400", "--socket", "7400", "--fault", "pin 3 stuck 0"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, StartsWith("Expected: V000"));
    EXPECT_THAT(result.out, HasSubstr("\n  Result: V000"));
    EXPECT_EQ(std::ranges::count(result.out, '\n') % 2, 0) << "two lines a row";
    EXPECT_THAT(result.out, Not(HasSubstr("fail!")));
    EXPECT_EQ(result.err, "tamrix: 7400: TTL & CMOS Test fail!\n");
}

TEST_F(logic, a_chip_that_drives_against_the_vectors_of_another_is_told)
{
    const auto result = ttl({"test", "7404", "--socket", "7400"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, StartsWith("tamrix: note: this could have done harm: pin "));
    EXPECT_THAT(result.err, EndsWith("tamrix: 7404: TTL & CMOS Test fail!\n"));
}

TEST_F(logic, a_silent_programmer_is_told)
{
    const auto silent = ttl({"test", "7400", "--socket", "7400", "--fault", "no answer"});
    EXPECT_EQ(silent.err, "tamrix: 7400: the programmer does not answer" + remedy);
    EXPECT_EQ(silent.status, 3);
    EXPECT_EQ(ttl({"find", "--socket", "7400", "--fault", "no answer"}).err,
              "tamrix: auto find: the programmer does not answer" + remedy);
    const auto timed_out = ttl({"test", "7400", "--socket", "7400", "--fault", "read never ends"});
    EXPECT_EQ(timed_out.err, "tamrix: 7400: Communication error! The results did not come" + remedy);
    EXPECT_EQ(timed_out.out, "");
    EXPECT_EQ(timed_out.status, 3);
}

TEST_F(logic, auto_find_after_a_lost_read_names_nothing_and_is_not_done)
{
    const auto result = ttl({"find", "--socket", "7400", "--fault", "read never ends 3"});
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "tamrix: auto find: Communication error! The results did not come" + remedy);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(ttl({"find", "--socket", "74193", "--fault", "read never ends 2"}).status, 0) << "the engine asks again";
}

TEST_F(logic, without_vectors_in_the_library_no_test_was_carried_out)
{
    const std::string whole = library();
    folder.write("lib/test.lib", whole.substr(0, whole.find("\r\n") + 2) + "end-ksm\r\n");
    const auto test = ttl({"test", "7400"});
    EXPECT_EQ(test.err, "tamrix: 7400: no record in the library (a name of 12 letters is never found); add it under a "
                        "shorter name\n");
    EXPECT_EQ(test.out, "");
    EXPECT_EQ(test.status, 3);
    const auto find = ttl({"find"});
    EXPECT_EQ(find.err, "tamrix: auto find: the library is damaged; name a sound one with --syspath\n");
    EXPECT_EQ(find.status, 3);
}

TEST_F(logic, a_device_whose_name_stands_inside_an_earlier_one_cannot_be_deleted_or_replaced)
{
    folder.write("rows.txt", "0H0H0HGH0H0H0V\n");
    EXPECT_EQ(ttl({"add", "37400", "14", "rows.txt"}).status, 0);
    const std::string before = library();
    const std::string in_the_way =
        "tamrix: 7400 cannot be deleted or replaced while 37400 is in the library, whose name holds it\n";
    const auto deleted = ttl({"delete", "7400"});
    EXPECT_EQ(deleted.err, in_the_way);
    EXPECT_EQ(deleted.status, 1);
    EXPECT_EQ(ttl({"add", "7400", "14", "rows.txt"}).err, in_the_way);
    EXPECT_TRUE(library() == before);
    EXPECT_EQ(ttl({"delete", "37400"}).status, 0);
    EXPECT_EQ(ttl({"delete", "7400"}).status, 0);
}

TEST_F(logic, find_names_what_the_chip_could_be)
{
    EXPECT_EQ(ttl({"find", "--socket", "74193"}).out, "40193\n74193\n");
    const auto empty = ttl({"find"});
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.err, "tamrix: Device Not Found!\n");
}

TEST_F(logic, a_device_is_added_tested_and_deleted_again)
{
    const std::string before = library();
    folder.write("rows.txt", "# an inverter of one's own\n\n0H0H0HGH0H0H0V\n1l1l1l G l1l1l1 V # with blanks\n");
    EXPECT_EQ(ttl({"add", "MINE", "14", "rows.txt"}).out, "MINE added\n");
    EXPECT_EQ(ttl({"show", "MINE"}).out, "pins: 14\nrows: 2\nV0001 0H0H0HGH0H0H0V\nV0002 1L1L1LGL1L1L1V\n");
    EXPECT_EQ(ttl({"test", "MINE", "--socket", "7404"}).out, "MINE: Vector Test OK!\n");
    EXPECT_EQ(ttl({"add", "MINE", "14", "rows.txt"}).out, "MINE replaced\n");
    EXPECT_EQ(ttl({"delete", "MINE"}).out, "MINE deleted\n");
    EXPECT_TRUE(library() == before);
}

TEST_F(logic, rows_that_no_engine_could_play_are_refused_with_their_line)
{
    const auto refusal = [&](const std::string& rows) {
        folder.write("rows.txt", rows);
        const auto result = ttl({"add", "MINE", "4", "rows.txt"});
        EXPECT_EQ(result.status, 2);
        return result.err;
    };
    const std::string before = library();
    EXPECT_EQ(refusal("1GHV\n1GQV\n"),
              "tamrix: rows.txt:2: \"Q\" where a letter of 1 0 H L C K X V G Z N was expected\n");
    EXPECT_EQ(refusal("1GHV\n1GV\n"), "tamrix: rows.txt:2: 3 letters where 4 were expected\n");
    EXPECT_EQ(refusal("# none\n"), "tamrix: rows.txt: no rows in it\n");
    EXPECT_EQ(refusal("10HL\n"), "tamrix: rows.txt: the first row has no \"V\" and \"G\" for the supply pins\n");
    std::string many;
    for (int i = 0; i < 255; ++i) many += "1GHV\n";
    EXPECT_EQ(refusal(many), "tamrix: rows.txt: 255 rows, more than the 254 that a record holds\n");
    EXPECT_TRUE(library() == before);
}

TEST_F(logic, words_that_make_no_sense_are_refused)
{
    folder.write("rows.txt", "1GHV\n");
    EXPECT_EQ(ttl({"add", "MINE", "13", "rows.txt"}).err, "tamrix: PINS 13: an even number from 2 to 40 is expected\n");
    EXPECT_EQ(ttl({"add", "A NAME", "4", "rows.txt"}).status, 2);
    EXPECT_EQ(ttl({"add", "THIRTEENCHARS", "4", "rows.txt"}).status, 2);
    EXPECT_EQ(ttl({"add", "MINE", "4", "none.txt"}).err, "tamrix: none.txt: cannot be read\n");
    EXPECT_EQ(ttl({"test", "7400", "--route", "serial"}).err, "tamrix: --route serial: usb or devobj is expected\n");
    EXPECT_EQ(ttl({"test", "7400", "--model", "x"}).err, "tamrix: --model x: a number from 0 to 99 is expected\n");
    EXPECT_EQ(ttl({"test", "7400", "--socket", "1234"}).err,
              "tamrix: --socket 1234: no such chip; \"tamrix ttl list\" shows those that there are\n");
    EXPECT_THAT(ttl({"test", "7400", "--fault", "pin x"}).err, StartsWith("tamrix: --fault pin x: "));
    EXPECT_EQ(ttl({"burn"}).status, 2);
}

TEST_F(logic, a_name_that_is_not_there_and_a_library_that_is_not_there_fail)
{
    const std::string unknown = "tamrix: 9999: not in the library; tamrix ttl list shows the names\n";
    EXPECT_EQ(ttl({"show", "9999"}).err, unknown);
    EXPECT_EQ(ttl({"test", "9999"}).err, unknown);
    EXPECT_EQ(ttl({"delete", "9999"}).err, unknown);
    const auto result = run({"ttl", "list", "--syspath", "none/"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: none/lib/test.lib: the folder none does not exist\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path("none")));
}

TEST_F(logic, the_vectors_of_a_fuse_file_are_played_on_the_chip)
{
    folder.write("gate.jed",
                 "A gate*\nQP14*\nQF8*\nL0000 01010101*\nV0001 11L11LNL11H01N*\nV0002 01H01HNH01H10N*\nC00AA*\n");
    const auto good = run({"vectors", "gate.jed", "--socket", "7400"});
    EXPECT_EQ(good.out, ">> Vector Test OK!\n");
    EXPECT_EQ(good.err, "");
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(run({"vectors", "gate.jed", "--socket", "7400", "--model", "22"}).status, 0);
    const auto bad = run({"vectors", "gate.jed", "--socket", "7400", "--fault", "pin 6 stuck 1"});
    EXPECT_EQ(bad.status, 1);
    EXPECT_THAT(bad.out, HasSubstr(">>   Result: V0001:11L11HNL11H01N"));
    EXPECT_THAT(bad.out, EndsWith(">> Vector Test fail!\n"));
    EXPECT_EQ(bad.err, "tamrix: gate.jed: the chip in the socket fails\n");
    for (const std::string model : {"22", "40"}) {
        const auto lost = run({"vectors", "gate.jed", "--socket", "7400", "--model", model, "--fault", "lost reply"});
        EXPECT_EQ(lost.out, ">> Communication error!\n>> Vector Test fail!\n");
        EXPECT_EQ(lost.err, "tamrix: gate.jed: Communication error! The reply to a vector did not come" + remedy);
        EXPECT_EQ(lost.status, 3);
    }
    const auto silent = run({"vectors", "gate.jed", "--socket", "7400", "--fault", "no answer"});
    EXPECT_EQ(silent.err, "tamrix: gate.jed: the programmer does not answer" + remedy);
    EXPECT_EQ(silent.status, 3);
}

TEST_F(logic, a_fuse_file_without_vectors_or_pins_is_told)
{
    folder.write("none.jed", "Nothing*\nQF8*\nL0000 01010101*\n");
    EXPECT_EQ(run({"vectors", "none.jed"}).err, "tamrix: none.jed: no vectors in it\n");
    folder.write("pins.jed", "No pins*\nQF8*\nL0000 01010101*\nV0001 11L11LNL11H01N*\n");
    EXPECT_EQ(run({"vectors", "pins.jed"}).err,
              "tamrix: pins.jed: does not give its pin count (QP), and the socket is empty\n");
}

}  // namespace
}  // namespace tamrix::tests
