// Words that no command knows, and the help.
#include "cli/command_inside.h"
#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace tamrix::tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

void expect_refused(const std::vector<std::string>& words, const std::string& text)
{
    const auto result = command_inside(words);
    EXPECT_EQ(result.status, 2) << text;
    EXPECT_EQ(result.out, "") << text;
    EXPECT_EQ(result.err, "tamrix: " + text + "\n");
}

TEST(command_words, an_unknown_command_names_the_nearest_one)
{
    expect_refused({"covert"}, "covert: no such command; did you mean convert?");
    expect_refused({"ttl", "lits"}, "lits: tamrix ttl has no such command; did you mean list?");
    expect_refused({"analyze", "recrod", "-o", "x"},
                   "recrod: tamrix analyze has no such command; did you mean record?");
    expect_refused({"wave", "genrate", "1000"}, "genrate: tamrix wave has no such command; did you mean generate?");
    expect_refused({"--language", "en", "detekt", "x"}, "detekt: no such command; did you mean detect?");
}

TEST(command_words, an_unknown_command_that_is_near_nothing_names_the_help)
{
    expect_refused({"burn"}, "burn: no such command (see tamrix --help)");
    expect_refused({"ttl", "burn"}, "burn: tamrix ttl has no such command (see tamrix ttl --help)");
    expect_refused({"ttl", "convert"}, "convert: tamrix ttl has no such command (see tamrix ttl --help)");
}

TEST(command_words, an_unknown_option_names_the_nearest_one)
{
    expect_refused({"convert", "in", "out", "--from-fiel", "3"},
                   "--from-fiel: no such option; did you mean --from-file?");
    expect_refused({"convert", "in", "out", "--from-fiel=3"}, "--from-fiel: no such option; did you mean --from-file?");
    expect_refused({"convert", "--from-mode", "evn", "--sav-from", "0", "in", "out"},
                   "--sav-from: no such option; did you mean --save-from?");
    expect_refused({"ttl", "test", "7400", "--sokcet", "7400"}, "--sokcet: no such option; did you mean --socket?");
    expect_refused({"--vresion"}, "--vresion: no such option; did you mean --version?");
    expect_refused({"detect", "--langauge", "en", "x"}, "--langauge: no such option; did you mean --language?");
    expect_refused({"convert", "in", "out", "--fast"}, "--fast: no such option (see tamrix convert --help)");
    expect_refused({"-x"}, "-x: no such option (see tamrix --help)");
    expect_refused({"---"}, "---: no such option (see tamrix --help)");
}

TEST(command_words, the_value_of_an_option_is_no_unknown_word)
{
    expect_refused({"ttl", "--language", "test"}, "A subcommand is required");
    expect_refused({"analyze", "record", "--pin", "-x"}, "--output is required");
    expect_refused({"jedec", "-oout.jed"}, "IN is required");
    expect_refused({"vectors", "--"}, "JEDEC-FILE is required");
}

TEST(command_words, help_on_a_command_is_what_the_command_prints_itself)
{
    const std::vector<std::vector<std::string>> commands{
        {}, {"convert"}, {"ttl"}, {"ttl", "test"}, {"analyze", "record"}, {"help"}};
    for (const auto& words : commands) {
        std::vector<std::string> asked{words}, first{words};
        asked.emplace_back("--help");
        first.insert(first.begin(), "help");
        const auto by_option = command_inside(asked), by_command = command_inside(first);
        EXPECT_EQ(by_command.status, 0);
        EXPECT_THAT(by_command.out, HasSubstr("Usage: tamrix"));
        EXPECT_EQ(by_command.out, by_option.out);
        EXPECT_EQ(by_command.err, "");
    }
    EXPECT_THAT(command_inside({"--language", "en", "help", "ttl", "test"}).out, HasSubstr("Usage: tamrix ttl test"));
}

TEST(command_words, help_on_what_is_no_command_names_the_nearest_one)
{
    expect_refused({"help", "covert"}, "covert: no such command; did you mean convert?");
    expect_refused({"help", "ttl", "tst"}, "tst: tamrix ttl has no such command; did you mean test?");
    expect_refused({"help", "convert", "in.hex"},
                   "in.hex: tamrix convert has no such command (see tamrix convert --help)");
}

TEST(command_words, a_file_may_have_the_name_help)
{
    const temp_folder folder;
    folder.write("help", "0123");
    EXPECT_EQ(tamrix_command({"detect", "help"}, {.folder = folder.path("")}).out, "help: 0 binary\n");
}

TEST(command_words, no_command_gets_a_short_help_on_standard_error)
{
    const auto result = command_inside({});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("tamrix: a command is expected\nUsage: tamrix COMMAND ...\n  "));
    for (const char* command : {"convert", "detect", "jedec", "svf", "ttl", "vectors", "selftest", "analyze", "wave",
                                "info", "compare", "dump", "tour", "help"})
        EXPECT_THAT(result.err, HasSubstr("\n  " + std::string{command} + " ")) << command;
    EXPECT_THAT(result.err, EndsWith("\ntamrix help COMMAND explains a command, tamrix --help the options of all.\n"));
}

/// Every command with its subcommands, as the help lists them; the program itself is the first.
std::vector<std::vector<std::string>> all_commands(const std::vector<std::string>& above = {})
{
    std::vector<std::vector<std::string>> all{above};
    std::vector<std::string> words{"help"};
    words.insert(words.end(), above.begin(), above.end());
    std::istringstream lines{command_inside(words).out};
    std::string line;
    while (std::getline(lines, line) && line != "Subcommands:") {
    }
    while (std::getline(lines, line) && line.starts_with("  ")) {
        if (line[2] == ' ') continue;  // more on the command above
        std::vector<std::string> below{above};
        below.push_back(line.substr(2, line.find(' ', 2) - 2));
        const auto with_its_own = all_commands(below);
        all.insert(all.end(), with_its_own.begin(), with_its_own.end());
    }
    return all;
}

std::vector<std::string> examples_at_the_end_of(const std::string& help)
{
    const std::string title = "\n\nExamples:\n";
    const auto at = help.find(title);
    std::vector<std::string> examples;
    if (at == std::string::npos) return examples;
    std::istringstream lines{help.substr(at + title.size())};
    for (std::string line; std::getline(lines, line);) {
        EXPECT_THAT(line, StartsWith("  tamrix ")) << "nothing comes after the examples";
        examples.push_back(line.substr(2));
    }
    return examples;
}

/// The files that the examples name.
void write_samples(const temp_folder& folder)
{
    namespace fs = std::filesystem;
    fs::copy(TAMRIX_SAMPLES "/blink.hex", folder.path("firmware.hex"));
    for (const char* name : {"firmware.bin", "copy.s19"})
        tamrix_command({"convert", "firmware.hex", name}, {.folder = folder.path("")});
    const std::string gate =
        "\x02 A gate*\nQP14*\nQF8*\nQV2*\nL0000 01010101*\nV0001 11L11LNL11H01N*\nV0002 01H01HNH01H10N*\nC00AA*\n\x03"
        "0000";  // no transmission checksum
    for (const char* name : {"decoder.jed", "gate.jed"}) folder.write(name, gate);
    folder.write("decoder.svf", "STATE IDLE;\n");
    folder.write("rows.txt", "0H0H0HGH0H0H0V\n1L1L1LGL1L1L1V\n");
    std::string counts(32768, '\0');
    for (std::size_t i = 0; i < counts.size(); ++i) counts[i] = static_cast<char>(i / 4);
    folder.write("signals.bin", counts);
    for (const std::string library : {"lib", "lib1"})
        fs::copy(TAMRIX_SAMPLES "/../" + library, fs::path{folder.path("work")} / library, fs::copy_options::recursive);
}

void expect_success(const std::string& example)
{
    const temp_folder folder;
    std::filesystem::create_directory(folder.path("work"));
    write_samples(folder);
    const std::string programs = std::filesystem::path{TAMRIX_COMMAND}.parent_path().string();
    const auto result =
        run_program({"sh", "-c", "PATH=" + programs + ":$PATH; " + example},
                    {.folder = folder.path(""), .environment = {"XDG_DATA_HOME=" + folder.path("home")}});
    EXPECT_EQ(result.status, 0) << example;
    EXPECT_EQ(result.err, "") << example;
}

TEST(command_words, every_help_ends_with_two_examples_that_work)
{
    const auto commands = all_commands();
    EXPECT_GE(commands.size(), 24U);
    for (const auto& command : commands) {
        std::vector<std::string> words{command};
        words.emplace_back("--help");
        const std::vector<std::string> examples = examples_at_the_end_of(command_inside(words).out);
        EXPECT_GE(examples.size(), 2U) << testing::PrintToString(command);
        for (const std::string& example : examples) expect_success(example);
    }
}

}  // namespace
}  // namespace tamrix::tests
