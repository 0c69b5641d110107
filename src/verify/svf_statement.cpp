#include "verify/svf_statement.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace tamrix {

namespace {

constexpr std::array<std::string_view, 4> stable_states{"RESET", "IDLE", "DRPAUSE", "IRPAUSE"};
constexpr std::array<std::string_view, 16> states{"RESET",   "IDLE",    "DRSELECT", "DRCAPTURE", "DRSHIFT",   "DREXIT1",
                                                  "DRPAUSE", "DREXIT2", "DRUPDATE", "IRSELECT",  "IRCAPTURE", "IRSHIFT",
                                                  "IREXIT1", "IRPAUSE", "IREXIT2",  "IRUPDATE"};

/// A word as a remark shows it.
std::string shown(const svf_word& word)
{
    constexpr std::size_t most_shown = 40;
    std::string result = word.in_parentheses ? "(" : "";
    for (const char one : word.text.substr(0, most_shown)) result.push_back(one >= ' ' && one < 0x7F ? one : '?');
    if (word.text.size() > most_shown) return result + "...";
    return result + (word.in_parentheses ? ")" : "");
}

bool is_digit(char one) { return one >= '0' && one <= '9'; }

}  // namespace

bool svf_statement::next_is_number() const
{
    return !at_end() && !words_[at_].in_parentheses && (is_digit(words_[at_].text[0]) || words_[at_].text[0] == '.');
}

bool svf_statement::next_is_name() const
{
    return !at_end() && !words_[at_].in_parentheses && words_[at_].text[0] >= 'A' && words_[at_].text[0] <= 'Z';
}

std::string svf_statement::take_word(std::string_view expected)
{
    if (at_end() || words_[at_].in_parentheses) {
        wrong_next(expected);
        return {};
    }
    return words_[at_++].text;
}

std::string svf_statement::take_one_of(std::span<const std::string_view> allowed, std::string_view expected)
{
    if (!at_end() && std::ranges::any_of(allowed, [this](std::string_view one) { return next_is(one); })) {
        return words_[at_++].text;
    }
    wrong_next(expected);
    return {};
}

std::optional<std::uint64_t> svf_statement::take_whole_number(std::string_view expected)
{
    constexpr std::uint64_t most = 0xFFFFFFFF;
    if (!next_is_number()) {
        wrong_next(expected);
        return std::nullopt;
    }
    const std::string& text = words_[at_].text;
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value > most) {
        wrong_next(expected);
        return std::nullopt;
    }
    ++at_;
    return value;
}

std::optional<double> svf_statement::take_number(std::string_view expected)
{
    if (!next_is_number()) {
        wrong_next(expected);
        return std::nullopt;
    }
    const std::string& text = words_[at_].text;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        wrong_next(expected);
        return std::nullopt;
    }
    ++at_;
    return value;
}

std::optional<double> svf_statement::take_seconds()
{
    const auto value = take_number("a time");
    take_one_of({"SEC"}, "SEC");
    return value;
}

const svf_word* svf_statement::take_parentheses(std::string_view expected)
{
    if (at_end() || !words_[at_].in_parentheses) {
        wrong_next(expected);
        return nullptr;
    }
    return &words_[at_++];
}

bool svf_statement::take_state() { return !take_one_of(states, "a state").empty(); }

bool svf_statement::take_stable_state()
{
    return !take_one_of(stable_states, "RESET, IDLE, DRPAUSE or IRPAUSE").empty();
}

void svf_statement::wrong(std::string found, std::string expected)
{
    remark(words_[at_ == 0 ? 0 : at_ - 1].line, std::move(found), std::move(expected));
}

void svf_statement::wrong_before(const std::string& expected)
{
    wrong(shown(words_[at_ == 0 ? 0 : at_ - 1]), expected);
}

void svf_statement::wrong_next(std::string_view expected)
{
    if (at_ == words_.size()) return wrong_at_end(std::string{expected});
    remark(words_[at_].line, shown(words_[at_]), std::string{expected});
}

void svf_statement::wrong_at_end(const std::string& expected)
{
    remark(words_.back().line, "the end of the statement", expected);
}

void svf_statement::remark(std::uint64_t line, std::string found, std::string expected)
{
    if (!std::exchange(wrong_, true)) remarks_.remark(line, std::move(found), std::move(expected));
}

}  // namespace tamrix
