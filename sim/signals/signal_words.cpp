#include "sim/signals/signal_words.h"

#include <charconv>
#include <sstream>

namespace tamrix::sim {

namespace {

constexpr int first_pin = 21, last_pin = 28;
constexpr double longest_seconds = 1000;

bool is_blank(char letter) { return letter == ' ' || letter == '\t'; }

template <class number, class... how>
std::optional<number> value_of(std::string_view text, how... base)
{
    number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base...);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<std::uint8_t> byte_of(std::string_view digits)
{
    return digits.size() == 2 ? value_of<std::uint8_t>(digits, 16) : std::nullopt;
}

std::string range_text(double lowest, double highest)
{
    std::ostringstream text;
    text.precision(12);
    text << "a number from " << lowest << " to " << highest;
    return text.str();
}

std::optional<int> pin_of(std::string_view text)
{
    if (text.size() != 3 || text[0] != 'P') return std::nullopt;
    const auto number = value_of<int>(text.substr(1));
    return number && *number >= first_pin && *number <= last_pin ? number : std::nullopt;
}

}  // namespace

signal_words::signal_words(std::string_view text) : text_{text}
{
    for (std::size_t at = 0; at < text_.size();) {
        if (is_blank(text_[at])) {
            ++at;
            continue;
        }
        const std::size_t first = at;
        if (text_[at] == '"') {
            words_.push_back({read_quoted(at), first + 1, true});
            continue;
        }
        while (at < text_.size() && !is_blank(text_[at])) ++at;
        words_.push_back({text_.substr(first, at - first), first + 1, false});
    }
}

/// From the opening quotation mark to the closing one, both included.
std::string signal_words::read_quoted(std::size_t& at) const
{
    const std::size_t first = at++;
    std::string bytes;
    for (; at < text_.size(); ++at) {
        if (text_[at] == '"') return ++at, bytes;
        if (text_[at] != '\\') {
            bytes += text_[at];
            continue;
        }
        const char letter = at + 1 < text_.size() ? text_[at + 1] : ' ';
        const std::size_t place = std::string_view{"rnt\\\""}.find(letter);
        if (place != std::string_view::npos) {
            bytes += "\r\n\t\\\""[place];
        } else if (const auto byte = letter == 'x' ? byte_of(text_.substr(at + 2, 2)) : std::nullopt) {
            bytes += static_cast<char>(*byte);
            at += 2;
        } else {
            fail_at(at + 1, "\\r, \\n, \\t, \\\\, \\\" or \\x with two hexadecimal digits was expected");
        }
        ++at;
    }
    fail_at(first + 1, "the quotation mark is not closed");
}

bool signal_words::next_is(std::string_view word) const
{
    return !ended() && !words_[next_].is_quoted && words_[next_].text == word;
}

bool signal_words::take(std::string_view word)
{
    if (!next_is(word)) return false;
    ++next_;
    return true;
}

std::string signal_words::any(const char* expected)
{
    if (ended()) fail(expected);
    return words_[next_++].text;
}

std::string signal_words::quoted(const char* expected)
{
    if (ended() || !words_[next_].is_quoted) fail(expected);
    return words_[next_++].text;
}

double signal_words::number(double lowest, double highest)
{
    const auto value = ended() || words_[next_].is_quoted ? std::nullopt : value_of<double>(words_[next_].text);
    if (!value || !(*value >= lowest) || !(*value <= highest)) fail(range_text(lowest, highest));
    ++next_;
    return *value;
}

int signal_words::whole(int lowest, int highest)
{
    const auto value = ended() || words_[next_].is_quoted ? std::nullopt : value_of<int>(words_[next_].text);
    if (!value || *value < lowest || *value > highest) {
        fail("a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest));
    }
    ++next_;
    return *value;
}

double signal_words::seconds() { return number(0, longest_seconds); }

std::optional<std::uint8_t> signal_words::hex(unsigned highest)
{
    if (ended() || words_[next_].is_quoted || words_[next_].text.size() > 2) return std::nullopt;
    const auto value = value_of<unsigned>(words_[next_].text, 16);
    if (!value || *value > highest) return std::nullopt;
    ++next_;
    return static_cast<std::uint8_t>(*value);
}

std::optional<std::uint8_t> signal_words::pins()
{
    if (ended() || words_[next_].is_quoted || !words_[next_].text.starts_with('P')) return std::nullopt;
    const std::string& text = words_[next_].text;
    const auto dots = text.find("..");
    const auto first = pin_of(text.substr(0, dots));
    const auto last = dots == std::string::npos ? first : pin_of(text.substr(dots + 2));
    if (!first || !last || *first > *last) fail("a pin from P21 to P28, or several as P21..P28");
    ++next_;
    unsigned mask = 0;
    for (int pin = *first; pin <= *last; ++pin) mask |= 1u << (pin - first_pin);
    return static_cast<std::uint8_t>(mask);
}

void signal_words::end() const
{
    if (!ended()) fail("the end");
}

void signal_words::fail_at(std::size_t column, const std::string& what) const
{
    throw signal_error{"signal \"" + text_ + "\", column " + std::to_string(column) + ": " + what};
}

void signal_words::fail(const std::string& expected) const
{
    const std::size_t column = ended() ? text_.size() + 1 : words_[next_].column;
    const std::string found = ended() ? "its end" : "\"" + words_[next_].text + "\"";
    fail_at(column, found + " where " + expected + " was expected");
}

void signal_words::refuse(const std::string& reason) const
{
    fail_at(next_ == 0 ? 1 : words_[next_ - 1].column, reason);
}

}  // namespace tamrix::sim
