#include "capture/formats.h"
#include "capture/vcd_head.h"

#include <charconv>
#include <numeric>

namespace tamrix::capture {

namespace {

std::uint64_t time_of_word(const text_reader& text, std::string_view word)
{
    std::uint64_t time = 0;
    const auto [end, error] = std::from_chars(word.data() + 1, word.data() + word.size(), time);
    if (error != std::errc{} || end != word.data() + word.size())
        text.fail("time " + in_quotes(word), "a whole number");
    return time;
}

/// What all times are a multiple of, counted from the first one: the longest period that shows every change. A look at
/// the whole file.
std::optional<sample_period> period_of_times(const std::string& path)
{
    text_reader text{path};
    const std::uint64_t unit = read_vcd_head(text).unit;
    std::optional<std::uint64_t> first;
    std::uint64_t common = 0;
    for (std::string_view word = text.token(); !word.empty(); word = text.token()) {
        if (word.front() != '#') continue;
        const std::uint64_t time = time_of_word(text, word);
        if (!first) first = time;
        if (time >= *first) common = std::gcd(common, time - *first);
    }
    if (common == 0) common = 1;
    if (common > 100 * (femtoseconds_of_second / unit)) fail_at(path, 0, "times more than 100 s apart");
    const auto period = sample_period::of_femtoseconds(common * unit);
    if (!period) fail_at(path, 0, "times less than 1 ps apart");
    return period;
}

class vcd_source final : public sample_source {
public:
    vcd_source(const std::string& path, const reading_options& options)
        : text_{path}, head_of_file_{read_vcd_head(text_)}
    {
        const channel_choice choice = choose_channels(path, head_of_file_.names, options);
        head_.names = choice.names;
        left_out_ = choice.left_out;
        head_.period = options.period ? options.period : head_of_file_.period;
        if (!head_.period) head_.period = period_of_times(path);
        places_.assign(head_of_file_.names.size(), 0);
        for (std::size_t i = 0; i < choice.taken.size(); ++i) {
            places_[choice.taken[i]] |= static_cast<std::uint8_t>(1u << i);
        }
    }
    std::size_t read(std::span<std::uint8_t> target) override
    {
        std::size_t count = 0;
        while (count < target.size() && (given_ < until_ || take_words())) {
            const std::size_t run = std::min<std::uint64_t>(until_ - given_, target.size() - count);
            std::memset(target.data() + count, level_, run);
            count += run;
            given_ += run;
        }
        return count;
    }
    double share() const override { return text_.share(); }

private:
    /// Up to a time at which a sample is due; false at the end.
    bool take_words()
    {
        while (!ended_) {
            const std::string_view word = text_.token();
            if (word.empty()) {
                end_of_file();
            } else if (word.front() == '#') {
                take_time(word);
            } else {
                take_value(word);
            }
            if (given_ < until_) return true;
        }
        return false;
    }
    void end_of_file()
    {
        ended_ = true;
        if (!first_time_ && has_value_) text_.fail("end of the file", "a time");
        if (has_value_) ++until_;  // values after the last time last for a sample
        if (unknown_) remarks_.push_back(std::to_string(unknown_) + " values are neither 0 nor 1; they are taken as 0");
    }
    void take_time(std::string_view word)
    {
        const std::uint64_t time = time_of_word(text_, word);
        if (!first_time_) first_time_ = time;
        if (time < last_time_) text_.fail("time " + std::to_string(time), "none before " + std::to_string(last_time_));
        last_time_ = time;
        const auto sample = head_.period->sample_at(time - *first_time_, head_of_file_.unit);
        if (!sample) text_.fail("time " + std::to_string(time), "at most " + std::to_string(most_samples) + " samples");
        until_ = std::max(until_, *sample);
        has_value_ = false;
    }
    void take_value(std::string_view word)
    {
        const char kind = word.front();
        word.remove_prefix(1);
        switch (kind) {
        case '$': return take_section(word);
        case 'b':
        case 'B': {
            const std::string value{word};
            return set_bits(value, text_.token());
        }
        case 'r':
        case 'R':
        case 's': text_.token(); return;
        default: return set_bits({&kind, 1}, word);
        }
    }
    void take_section(std::string_view word)
    {
        if (word != "comment") return;  // values are the same in all others
        for (;;) {
            const std::string_view next = text_.token();
            if (next.empty()) text_.fail("end of the file", "$end");
            if (next == "$end") return;
        }
    }
    void set_bits(std::string_view value, std::string_view code)
    {
        code_ = code;
        const auto found = head_of_file_.bits.find(code_);
        if (found == head_of_file_.bits.end()) text_.fail("value of " + in_quotes(code), "a declared variable");
        if (value.find_first_not_of("01xXzZuUwWlLhH-") != value.npos || value.empty()) {
            text_.fail("value " + in_quotes(value), "0, 1, x or z");
        }
        has_value_ = true;
        for (std::size_t bit = 0; bit < found->second.size(); ++bit) {
            const char letter = bit < value.size() ? value[value.size() - 1 - bit] : '0';
            const std::uint8_t place = places_[found->second[bit]];
            if (letter != '0' && letter != '1') unknown_ += place != 0;
            level_ = static_cast<std::uint8_t>(letter == '1' ? level_ | place : level_ & ~place);
        }
    }

    text_reader text_;
    vcd_head head_of_file_;
    std::vector<std::uint8_t> places_;  // of each bit of the file: the channel as a set
    std::string code_;
    std::optional<std::uint64_t> first_time_;
    std::uint64_t last_time_ = 0, until_ = 0, given_ = 0, unknown_ = 0;
    std::uint8_t level_ = 0;
    bool has_value_ = false, ended_ = false;
};

}  // namespace

std::unique_ptr<sample_source> open_vcd(const std::string& path, const reading_options& options)
{
    return std::make_unique<vcd_source>(path, options);
}

}  // namespace tamrix::capture
