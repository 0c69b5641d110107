// Colours, and a command that is quiet.
#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A terminal for the standard error of a command.
class terminal {
public:
    terminal() : end_{::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)}
    {
        EXPECT_EQ(::grantpt(end_), 0);
        EXPECT_EQ(::unlockpt(end_), 0);
        const char* name = ::ptsname(end_);
        name_ = name != nullptr ? name : "";
        held_open_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    ~terminal()
    {
        ::close(held_open_);
        ::close(end_);
    }
    terminal(const terminal&) = delete;
    terminal& operator=(const terminal&) = delete;

    /// What the command shows there, of an error that one line holds.
    std::string shown_by(const std::vector<std::string>& words, const std::vector<std::string>& environment) const
    {
        const auto result = tamrix_command(words, {.environment = environment, .standard_error = name_});
        EXPECT_EQ(result.err, "");
        std::array<char, 4096> text{};
        const auto length = ::read(end_, text.data(), text.size());
        return {text.data(), static_cast<std::size_t>(length > 0 ? length : 0)};
    }

private:
    int end_, held_open_ = -1;
    std::string name_;
};

const std::string plain_error = "tamrix: burn: no such command (see tamrix --help)\r\n";

TEST(console, errors_have_a_colour_on_a_terminal)
{
    const terminal screen;
    EXPECT_EQ(screen.shown_by({"burn"}, {"TERM=xterm", "NO_COLOR="}),
              "\x1B[31mtamrix: \x1B[0mburn: no such command (see tamrix --help)\r\n");
}

TEST(console, notes_have_another_colour)
{
    const terminal screen;
    const temp_folder folder;
    const std::string bytes = folder.write("odd.bin", std::string(100, 'a'));
    EXPECT_THAT(screen.shown_by({"analyze", "info", bytes}, {"TERM=xterm", "NO_COLOR="}),
                StartsWith("\x1B[33mtamrix: note: \x1B[0m"));
}

TEST(console, there_is_no_colour_where_the_person_or_the_terminal_wants_none)
{
    const terminal screen;
    EXPECT_EQ(screen.shown_by({"burn"}, {"TERM=xterm", "NO_COLOR=1"}), plain_error);
    EXPECT_EQ(screen.shown_by({"burn"}, {"TERM=dumb", "NO_COLOR="}), plain_error);
}

TEST(console, there_is_no_colour_off_a_terminal)
{
    const auto result = tamrix_command({"burn"}, {.environment = {"TERM=xterm", "NO_COLOR="}});
    EXPECT_EQ(result.err, "tamrix: burn: no such command (see tamrix --help)\n");
    const auto help = tamrix_command({"--help"}, {.environment = {"TERM=xterm", "NO_COLOR="}});
    EXPECT_THAT(help.out, Not(HasSubstr("\x1B")));
}

class quiet : public testing::Test {
protected:
    /// The same command without and with --quiet.
    void expect_only_results(std::vector<std::string> words, const std::string& results)
    {
        const auto loud = tamrix_command(words, {.folder = folder.path("")});
        EXPECT_NE(loud.out + loud.err, results) << words.front();
        words.insert(words.begin(), "--quiet");
        const auto before = tamrix_command(words, {.folder = folder.path("")});
        EXPECT_EQ(before.status, loud.status);
        EXPECT_EQ(before.out, results) << words[1];
        EXPECT_EQ(before.err, "");
        words.front() = words[1];
        words.erase(words.begin() + 1);
        words.emplace_back("-q");
        EXPECT_EQ(tamrix_command(words, {.folder = folder.path("")}).out, results) << words.front();
    }

    const temp_folder folder;
};

TEST_F(quiet, is_a_command_that_does_what_it_was_asked_to)
{
    folder.write("rows.txt", "0H0H0HGH0H0H0V\n");
    folder.write("signals.bin", std::string(32768, 'a'));
    folder.write("gate.jed", "A gate*\nQP14*\nQF8*\nL0000 01010101*\nV0001 11L11LNL11H01N*\nC00AA*\n");
    expect_only_results({"ttl", "add", "MINE", "14", "rows.txt"}, "");
    expect_only_results({"ttl", "test", "7400", "--socket", "7400"}, "");
    expect_only_results({"vectors", "gate.jed", "--socket", "7400"}, "");
    expect_only_results({"analyze", "record", "-o", "new.bin", "--banks", "1"}, "");
    expect_only_results({"analyze", "draw", "signals.bin", "-o", "new.svg"}, "");
    EXPECT_THAT(tamrix_command({"selftest"}).out, Not(StartsWith("System Test: ")));
    EXPECT_THAT(tamrix_command({"selftest", "-q"}).out, StartsWith("System Test: passed"));
    EXPECT_EQ(tamrix_command({"-q", "ttl", "delete", "MINE"}).out, "");
    EXPECT_EQ(tamrix_command({"-q", "ttl", "reset"}).out, "");
}

TEST_F(quiet, still_prints_results_and_errors)
{
    folder.write("odd.bin", std::string(100, 'a'));
    const command_setting there{.folder = folder.path("")};
    EXPECT_EQ(tamrix_command({"--quiet", "detect", "odd.bin"}, there).out, "odd.bin: 0 binary\n");
    EXPECT_EQ(tamrix_command({"--quiet", "burn"}).err, "tamrix: burn: no such command (see tamrix --help)\n");
    const auto loud = tamrix_command({"analyze", "info", "odd.bin"}, there);
    const auto result = tamrix_command({"analyze", "info", "odd.bin", "--quiet"}, there);
    EXPECT_EQ(result.out, loud.out);
    EXPECT_THAT(loud.err, StartsWith("tamrix: note: "));
    EXPECT_EQ(result.err, "");
}

}  // namespace
}  // namespace tamrix::tests
