#include "sim/faults.h"

#include <charconv>
#include <utility>
#include <vector>

namespace tamrix::sim {

namespace {

constexpr int most_pins = 48, highest_left_code = 24, lowest_right_code = 101, highest_code = 124, most_banks = 16,
              most_times = 1'000'000;

std::vector<std::string> words_of(std::string_view text)
{
    std::vector<std::string> words;
    std::string word;
    for (const char letter : text) {
        if (letter != ' ' && letter != '\t') {
            word += letter;
        } else if (!word.empty()) {
            words.push_back(std::exchange(word, {}));
        }
    }
    if (!word.empty()) words.push_back(word);
    return words;
}

/// One fault's words, taken from the front.
class sentence {
public:
    explicit sentence(std::string_view text) : text_{text}, words_{words_of(text)} {}

    bool ended() const { return next_ == words_.size(); }
    /// Takes the words of `phrase` where they come next.
    bool starts(std::string_view phrase)
    {
        const auto wanted = words_of(phrase);
        if (words_.size() - next_ < wanted.size()) return false;
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            if (words_[next_ + i] != wanted[i]) return false;
        }
        next_ += wanted.size();
        return true;
    }
    int number(int lowest, int highest)
    {
        const std::string range = "a number from " + std::to_string(lowest) + " to " + std::to_string(highest);
        if (ended()) fail(range);
        const std::string& word = words_[next_];
        int value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
        if (error != std::errc{} || end != word.data() + word.size() || value < lowest || value > highest) fail(range);
        ++next_;
        return value;
    }
    void end() const
    {
        if (!ended()) fail("the end");
    }
    [[noreturn]] void fail(const std::string& expected) const
    {
        const std::string found = ended() ? "its end" : "\"" + words_[next_] + "\"";
        throw fault_error{"fault \"" + text_ + "\": " + found + " where " + expected + " was expected"};
    }

private:
    std::string text_;
    std::vector<std::string> words_;
    std::size_t next_ = 0;
};

pin_fault pin_fault_of(sentence& rest)
{
    if (rest.starts("open")) return pin_fault::open;
    if (rest.starts("stuck")) return rest.number(0, 1) == 0 ? pin_fault::stuck_low : pin_fault::stuck_high;
    rest.fail("\"open\" or \"stuck\"");
}

fault_count count_of(sentence& rest, int times_without_number)
{
    return fault_count{rest.ended() ? times_without_number : rest.number(1, most_times)};
}

}  // namespace

void add_fault(fault_set& faults, std::string_view text)
{
    sentence rest{text};
    fault_set wanted = faults;  // nothing changes where the text is wrong
    if (rest.starts("pin")) {
        const int pin = rest.number(1, most_pins);
        wanted.pins[pin] = pin_fault_of(rest);
    } else if (rest.starts("dead driver")) {
        const int code = rest.number(1, highest_code);
        if (code > highest_left_code && code < lowest_right_code)
            throw fault_error{"fault \"" + std::string{text} + "\": pin codes are 1 to 24 and 101 to 124"};
        wanted.dead_drivers.insert(code);
    } else if (rest.starts("lost reply")) {
        wanted.lost_replies = count_of(rest, 1);
    } else if (rest.starts("read never ends")) {
        wanted.reads_without_end = count_of(rest, fault_count::always);
    } else if (rest.starts("marker never comes")) {
        wanted.lost_markers = count_of(rest, fault_count::always);
    } else if (rest.starts("no answer")) {
        wanted.no_answer = true;
    } else if (rest.starts("bad ram bank")) {
        wanted.bad_banks.insert(rest.number(0, most_banks - 1));
    } else {
        rest.fail(
            "\"pin\", \"dead driver\", \"lost reply\", \"read never ends\", \"marker never comes\", \"no answer\" or "
            "\"bad ram bank\"");
    }
    rest.end();
    faults = std::move(wanted);
}

}  // namespace tamrix::sim
