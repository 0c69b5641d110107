// A program of the project, started as a person starts it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tamrix::tests {

struct picture {
    int width = 0, height = 0;
    std::string pixels{};

    /// 0xRRGGBB; black outside.
    std::uint32_t colour(int x, int y) const;
};

/// What a command of the shell writes to its standard output.
std::string output_of(const std::string& command);
/// The same for a picture in the PPM format.
picture picture_in(const std::string& command);

class program {
public:
    /// Starts `name` from the folder of the programs; `settings` are "NAME=VALUE" in its environment.
    program(const std::string& name, std::vector<std::string> arguments, std::vector<std::string> settings = {});
    /// Kills it where it still runs.
    ~program();
    program(const program&) = delete;
    program& operator=(const program&) = delete;

    /// Waits until one of its windows with this title is on the screen and gives it the keyboard. Throws
    /// std::runtime_error after ten seconds.
    void focus(const std::string& title);
    /// How many of its windows on the screen have this title.
    int shown(const std::string& title) const;
    void press(const std::string& keys) const;
    /// The left button at a place of the window that has the keyboard, in parts of its width and height.
    void click_at(double across, double down) const;
    void type(const std::string& letters) const;
    /// The window with this title as it is on the screen: its pixels, three bytes each, row by row.
    picture look_at(const std::string& title) const;
    /// Gives the window that has the keyboard this size, in pixels.
    void resize(int width, int height) const;
    pid_t process() const { return process_; }
    /// Waits for its end and yields its exit status, or -1 where it did not end by itself.
    int wait();
    /// What it wrote to standard output and standard error so far.
    std::string output() const;

private:
    std::string windows(const std::string& title, const std::string& which) const;

    std::string output_file_;
    pid_t process_ = 0;
    bool running_ = true;
    int status_ = -1;
};

/// Waits at most ten seconds.
bool comes_true_within_ten_seconds(const std::function<bool()>& done);

}  // namespace tamrix::tests
