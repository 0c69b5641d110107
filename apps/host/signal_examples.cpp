#include "host/signal_examples.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

namespace tamrix::host {

namespace {

constexpr int first_pin = 21, pin_count = 8;
using pin_list = std::array<bool, pin_count>;

struct kind {
    int pins;
    const char* text;
};

/// Slow enough for each model to record them.
constexpr kind kinds[] = {{1, "square 1000 duty 50 phase 0"},
                          {4, "counter 10000"},
                          {1, "pulse 0.001 0.002 every 0.01"},
                          {1, "uart 9600 8N1 \"Hello\" every 0.01"},
                          {2, "i2c 50000 write 50 01 02 every 0.01"},
                          {4, "spi 50000 mode 0 send 9F receive FF C2 every 0.01"},
                          {1, "noise 10000 start 1"},
                          {8, "file capture.bin period 3.4 again"},
                          {1, "high"},
                          {1, "low"}};
/// A counter that P21 clocks. Outputs of chips may come to pins that have a signal.
constexpr const char* chip_example = "chip 7493 14=P21 1=12 2=low 3=low 12=P22 9=P23 8=P24 11=P25";

/// The place of "P21..." among the pins; -1 where `word` is something else.
int place_of(std::string_view word)
{
    if (word.size() < 3 || word[0] != 'P' || word[1] != '2' || word[2] < '1' || word[2] > '8') return -1;
    return word[2] - '1';
}

void mark(pin_list& taken, const std::string& word)
{
    const int first = place_of(word);
    const auto dots = word.find("..");
    const int last = dots == std::string::npos ? first : place_of(word.substr(dots + 2));
    for (int pin = first; first >= 0 && pin <= last; ++pin) taken[static_cast<std::size_t>(pin)] = true;
}

pin_list pins_of(const std::vector<std::string>& signals)
{
    pin_list taken{};
    for (const std::string& signal : signals) {
        std::istringstream words{signal.substr(0, signal.find('"'))};
        for (std::string word; words >> word;) mark(taken, word);
    }
    return taken;
}

std::string name_of(int place) { return "P" + std::to_string(first_pin + place); }

/// The first run of so many pins that are free; from P21 on if there is none.
std::string free_pins(const pin_list& taken, int count)
{
    const auto run = std::ranges::search_n(taken, count, false);
    const int first = run.empty() ? 0 : static_cast<int>(run.begin() - taken.begin());
    if (count == 1) return name_of(first);
    if (count == 2) return name_of(first) + " " + name_of(first + 1);
    return name_of(first) + ".." + name_of(first + count - 1);
}

}  // namespace

std::vector<std::string> signal_examples(const std::vector<std::string>& taken)
{
    const pin_list pins = pins_of(taken);
    std::vector<std::string> examples;
    for (const kind& one : kinds) examples.push_back(free_pins(pins, one.pins) + " " + one.text);
    examples.emplace_back(chip_example);
    return examples;
}

}  // namespace tamrix::host
