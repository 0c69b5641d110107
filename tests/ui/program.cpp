#include "program.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;

void run(const std::string& command)
{
    if (std::system(command.c_str()) != 0) throw std::runtime_error{"failed: " + command};
}

std::string new_file()
{
    std::string pattern = "/tmp/tamrix-output-XXXXXX";
    const int file = mkstemp(pattern.data());
    if (file < 0) throw std::runtime_error{"no temporary file"};
    close(file);
    return pattern;
}

}  // namespace

std::string output_of(const std::string& command)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe{popen(command.c_str(), "r"), pclose};
    std::string text;
    std::array<char, 4096> part{};
    while (const std::size_t length = std::fread(part.data(), 1, part.size(), pipe.get())) {
        text.append(part.data(), length);
    }
    return text;
}

picture picture_in(const std::string& command)
{
    std::istringstream file{output_of(command)};
    std::string format;
    int highest = 0;
    picture seen;
    file >> format >> seen.width >> seen.height >> highest;
    file.get();
    seen.pixels.assign(std::istreambuf_iterator<char>{file}, {});
    return seen;
}

bool comes_true_within_ten_seconds(const std::function<bool()>& done)
{
    for (const auto end = std::chrono::steady_clock::now() + 10s; std::chrono::steady_clock::now() < end;) {
        if (done()) return true;
        std::this_thread::sleep_for(50ms);
    }
    return done();
}

std::uint32_t picture::colour(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width || y >= height) return 0;
    const auto at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 3;
    const auto part = [&](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(pixels.at(at + i))}; };
    return part(0) << 16 | part(1) << 8 | part(2);
}

program::program(const std::string& name, std::vector<std::string> arguments, std::vector<std::string> settings)
    : output_file_{new_file()}
{
    std::string path = std::string{PROGRAM_FOLDER "/"} + name;
    std::vector<char*> list{path.data()};
    for (std::string& argument : arguments) list.push_back(argument.data());
    list.push_back(nullptr);
    process_ = fork();
    if (process_ != 0) return;
    const int file = open(output_file_.c_str(), O_WRONLY);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    for (std::string& setting : settings) putenv(setting.data());
    execv(list.front(), list.data());
    _exit(127);
}

program::~program()
{
    if (running_) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    std::remove(output_file_.c_str());
}

std::string program::windows(const std::string& title, const std::string& which) const
{
    const std::string search = "xdotool search --onlyvisible --all --pid " + std::to_string(process_);
    const bool ascii = std::ranges::all_of(title, [](unsigned char letter) { return letter < 0x80; });
    // xdotool itself compares no other letters than those of ASCII.
    const std::string command = ascii ? search + " --name '" + title + "' 2>/dev/null | " + which
                                      : "for w in $(" + search +
                                            " 2>/dev/null); do xdotool getwindowname $w 2>/dev/null | grep -q -e '" +
                                            title + "' && echo $w; done | " + which;
    const std::string found = output_of(command);
    return found.substr(0, found.find('\n'));
}

void program::focus(const std::string& title)
{
    std::string found;
    if (!comes_true_within_ten_seconds([&] { return !(found = windows(title, "tail -1")).empty(); })) {
        throw std::runtime_error{"no window " + title + "; the program wrote: " + output()};
    }
    std::this_thread::sleep_for(300ms);  // until it is drawn and listens
    run("xdotool windowfocus --sync " + found);
}

int program::shown(const std::string& title) const { return std::stoi(windows(title, "wc -l")); }

void program::press(const std::string& keys) const
{
    run("xdotool key --delay 50 " + keys);
    std::this_thread::sleep_for(150ms);
}

void program::click_at(double across, double down) const
{
    const auto part = [](const char* length, double of) {
        return "$((" + std::string{length} + " * " + std::to_string(static_cast<int>(of * 100)) + " / 100))";
    };
    run("eval $(xdotool getwindowfocus getwindowgeometry --shell) && xdotool mousemove --window $WINDOW " +
        part("WIDTH", across) + " " + part("HEIGHT", down) + " click 1");
    std::this_thread::sleep_for(200ms);
}

void program::type(const std::string& letters) const
{
    run("xdotool type --delay 20 '" + letters + "'");
    std::this_thread::sleep_for(150ms);
}

void program::resize(int width, int height) const
{
    run("xdotool getwindowfocus windowsize " + std::to_string(width) + " " + std::to_string(height));
    std::this_thread::sleep_for(300ms);
}

picture program::look_at(const std::string& title) const
{
    const std::string window = windows(title, "tail -1");
    if (window.empty()) throw std::runtime_error{"no window " + title};
    return picture_in("import -silent -window " + window + " -depth 8 ppm:-");
}

int program::wait()
{
    int status = 0;
    if (running_ && comes_true_within_ten_seconds([&] { return waitpid(process_, &status, WNOHANG) == process_; })) {
        running_ = false;
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return status_;
}

std::string program::output() const
{
    std::ifstream file{output_file_};
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace tamrix::tests
