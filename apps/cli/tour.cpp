#include "cli/tour.h"

#include "cli/command_line.h"
#include "cli/temporary_folder.h"
#include "host/data_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

#include <stdlib.h>

namespace tamrix::cli {

namespace {

namespace fs = std::filesystem;

std::vector<char> bytes_of(const fs::path& path)
{
    std::ifstream file{path, std::ios::binary};
    if (!file) fail(path.string() + ": cannot be read");
    return {std::istreambuf_iterator<char>{file}, {}};
}

void write(const fs::path& path, const std::vector<char>& bytes)
{
    std::ofstream file{path, std::ios::binary};
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) fail(path.string() + ": cannot be written");
}

constexpr const char* data_home = "XDG_DATA_HOME";

std::optional<std::string> variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>{value} : std::nullopt;
}

/// Runs the steps in a folder of its own, so that the commands read as a person would type them.
class walk {
public:
    explicit walk(console& con) : con_{con}, before_{fs::current_path()}
    {
        fs::current_path(folder_.path());
        ::setenv(data_home, folder_.path().c_str(), 1);  // a library of one's own may hold other chips
    }
    ~walk()
    {
        std::error_code none;
        fs::current_path(before_, none);
        if (data_home_before_) {
            ::setenv(data_home, data_home_before_->c_str(), 1);
        } else {
            ::unsetenv(data_home);
        }
    }
    walk(const walk&) = delete;
    walk& operator=(const walk&) = delete;

    void title(const std::string& text) { con_.line("\n== " + text); }

    /// Shows a command and runs it; both streams go to standard output here.
    void command(const std::vector<std::string>& words, exit_status expected)
    {
        std::string shown = "$ tamrix";
        for (const std::string& word : words)
            shown += word.find(' ') != std::string::npos ? " \"" + word + "\"" : " " + word;
        con_.line(shown);
        con_.finish();
        console all{stdout, stdout};
        const int status = run(words, all);
        if (status != expected) fail("the tour ends here: exit status " + std::to_string(status));
        if (status != exit_done) con_.line("(exit status " + std::to_string(status) + ")");
    }

    void compare(const std::string& one, const std::string& other)
    {
        if (bytes_of(one) != bytes_of(other)) fail("the tour ends here: " + one + " and " + other + " differ");
        con_.line(one + " and " + other + " hold the same " + std::to_string(fs::file_size(one)) + " bytes");
    }

private:
    console& con_;
    temporary_folder folder_;
    fs::path before_;
    std::optional<std::string> data_home_before_ = variable(data_home);
};

/// Turns a digit in the fifth line into another one.
void damage(const std::string& path)
{
    std::vector<char> text = bytes_of(path);
    auto at = text.begin();
    for (int line = 1; line < 5; ++line) at = std::next(std::find(at, text.end(), '\n'));
    at += 9;
    *at = *at == '0' ? '1' : '0';
    write("damaged.hex", text);
}

void look_at_signals(walk& steps)
{
    steps.title("The logic analyzer records what is at eight pins: a counter, and short pulses at P25");
    steps.command({"analyze", "record", "-o", "signals.bin", "--banks", "1", "--signal", "P21..P24 counter 20000",
                   "--signal", "P25 square 2000 duty 10"},
                  exit_done);
    steps.title("The recording as a picture, on the terminal and in a file, and what its channels do");
    steps.command({"analyze", "draw", "signals.bin", "--samples", "304"}, exit_done);
    steps.command({"analyze", "draw", "signals.bin", "-o", "signals.svg"}, exit_done);
    steps.command({"analyze", "info", "signals.bin"}, exit_done);
    steps.title("The signal generator comes as near to a frequency as it can, and says so");
    steps.command({"wave", "generate", "60000"}, exit_done);
    steps.title("The frequency meter measures that wave");
    steps.command({"wave", "meter", "--from-generator", "60000", "--count", "3"}, exit_done);
}

}  // namespace

void tour(console& con)
{
    const fs::path sample = fs::absolute(fs::path{host::data_folder()} / "samples" / "blink.hex");
    const std::vector<char> text = bytes_of(sample);
    walk steps{con};
    write("blink.hex", text);

    con.line("A tour on " + sample.string() + ", a program for an 8051 microcontroller.");
    steps.title("What kind of file is it?");
    steps.command({"detect", "blink.hex"}, exit_done);
    steps.title("It is loaded into the buffer and saved as an image");
    steps.command({"convert", "blink.hex", "blink.bin"}, exit_done);
    steps.title("The image goes back to a HEX file, and that to an image again: nothing is lost");
    steps.command({"convert", "blink.bin", "again.hex"}, exit_done);
    steps.command({"convert", "again.hex", "again.bin"}, exit_done);
    steps.compare("blink.bin", "again.bin");
    steps.title("For a 16-bit system the image is split over two chips, even and odd bytes");
    steps.command({"convert", "blink.bin", "even.s19", "--from-mode", "even"}, exit_done);
    steps.command({"convert", "blink.bin", "odd.s19", "--from-mode", "odd"}, exit_done);
    steps.title("A load that fails says where and why, and nothing is saved");
    damage("blink.hex");
    steps.command({"convert", "damaged.hex", "none.bin"}, exit_failed);
    steps.title("A value that does not fit is refused");
    steps.command({"convert", "blink.hex", "none.bin", "--device-words", "256", "--to-buffer", "101"},
                  exit_wrong_usage);
    steps.title("A logic IC in the socket of the simulated programmer passes the vectors of its type");
    steps.command({"ttl", "test", "7400", "--socket", "7400"}, exit_done);
    steps.title("One with a broken pin does not");
    steps.command({"ttl", "test", "7400", "--socket", "7400", "--fault", "pin 3 stuck 0"}, exit_failed);
    steps.title("What could an unknown chip be?");
    steps.command({"ttl", "find", "--socket", "74193"}, exit_done);
    steps.title("A programmer tests itself; the simulated one is sound");
    steps.command({"selftest", "--brief"}, exit_done);
    steps.title("One with a dead driver is not");
    steps.command({"selftest", "--brief", "--fault", "vcc driver 7 dead"}, exit_failed);
    look_at_signals(steps);
    con.line("\nThat is all so far. The workbench has a dialog for each of these steps.");
}

}  // namespace tamrix::cli
