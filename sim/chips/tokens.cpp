#include "chips/tokens.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tamrix::sim {
namespace {

constexpr std::size_t largest_statement = 4000;  // tokens

bool in_word(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; }

bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string shown(char c)
{
    if (c >= ' ' && c <= '~') return std::string{"\""} + c + "\"";
    constexpr std::string_view hex = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string{"the byte "} + hex[byte >> 4] + hex[byte & 15];
}

class cutter {
public:
    explicit cutter(std::string_view file) : file_{file} {}

    void line(std::string_view text, int number)
    {
        text = text.substr(0, text.find('#'));
        std::size_t at = 0;
        while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) ++at;
        if (at == text.size()) return;
        if (!continues_) {
            lines_.push_back({at > 0, number, {}, {}});
            depth_ = 0;
        }
        if (!continues_ && at == 0 && text.substr(0, 5) == "chip ") {  // a description is free text
            lines_.back().tokens.push_back({token::kind::word, "chip", number});
            lines_.back().rest = text.substr(5);
            return;
        }
        signs_and_words(text, at, number);
    }

    std::vector<statement_line> finish() { return std::move(lines_); }

private:
    void signs_and_words(std::string_view text, std::size_t at, int number)
    {
        auto& tokens = lines_.back().tokens;
        while (at < text.size()) {
            if (text[at] == ' ' || text[at] == '\t') {
                ++at;
                continue;
            }
            auto next = at;
            while (next < text.size() && in_word(text[next])) ++next;
            const bool word = next > at;
            if (!word) next = at + sign_length(text.substr(at), number);
            tokens.push_back(
                {word ? token::kind::word : token::kind::sign, std::string{text.substr(at, next - at)}, number});
            if (tokens.size() > largest_statement) throw chip_error{file_, number, "the statement is too long"};
            count_brackets(tokens.back());
            at = next;
        }
        continues_ = depth_ > 0 || tokens.back().text == ",";
    }

    std::size_t sign_length(std::string_view text, int number) const
    {
        constexpr std::array<std::string_view, 4> two{"==", "!=", "->", ".."};
        if (std::ranges::find(two, text.substr(0, 2)) != two.end()) return 2;
        if (std::string_view{"=:,(){}!&|^+-<>?"}.find(text[0]) != std::string_view::npos) return 1;
        throw chip_error{file_, number, "found " + shown(text[0]) + ", which means nothing here"};
    }

    void count_brackets(const token& last)
    {
        if (last.text == "(" || last.text == "{") ++depth_;
        if ((last.text == ")" || last.text == "}") && depth_ > 0) --depth_;
    }

    std::string_view file_;
    std::vector<statement_line> lines_;
    bool continues_ = false;
    int depth_ = 0;
};

struct numbered {
    std::string before, after;
    int number;
};

std::optional<numbered> number_at_end(const std::string& name)
{
    auto from = name.size();
    while (from > 0 && is_digit(name[from - 1])) --from;
    if (from == name.size() || name.size() - from > 3) return {};
    return numbered{name.substr(0, from), "", std::stoi(name.substr(from))};
}

std::optional<numbered> number_at_start(const std::string& name)
{
    std::size_t to = 0;
    while (to < name.size() && is_digit(name[to])) ++to;
    if (to == 0 || to > 3 || to == name.size()) return {};
    return numbered{"", name.substr(to), std::stoi(name.substr(0, to))};
}

std::optional<numbered> letter_at_end(const std::string& name)
{
    if (name.empty() || is_digit(name.back())) return {};
    return numbered{name.substr(0, name.size() - 1), "", static_cast<unsigned char>(name.back())};
}

std::vector<std::string> count_over(const std::optional<numbered>& from, const std::optional<numbered>& to,
                                    bool letters)
{
    if (!from || !to || from->before != to->before || from->after != to->after) return {};
    if (std::abs(from->number - to->number) > 63) return {};
    std::vector<std::string> names;
    const int step = from->number <= to->number ? 1 : -1;
    for (int n = from->number; n != to->number + step; n += step)
        names.push_back(from->before + (letters ? std::string(1, static_cast<char>(n)) : std::to_string(n)) +
                        from->after);
    return names;
}

}  // namespace

bool is_number(std::string_view word) { return !word.empty() && std::ranges::all_of(word, is_digit); }

std::vector<statement_line> cut_lines(std::string_view text, std::string_view file)
{
    cutter cut{file};
    int number = 0;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        auto line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        cut.line(line, ++number);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return cut.finish();
}

std::vector<std::string> name_range(const std::string& from, const std::string& to)
{
    auto names = count_over(number_at_end(from), number_at_end(to), false);
    if (names.empty()) names = count_over(number_at_start(from), number_at_start(to), false);
    if (names.empty()) names = count_over(letter_at_end(from), letter_at_end(to), true);
    return names;
}

void token_walk::wrong(std::string_view expected) const
{
    const auto found = done() ? std::string{"the end of the statement"} : "\"" + peek().text + "\"";
    refuse("found " + found + " where " + std::string{expected} + " was expected");
}

void token_walk::expect(std::string_view text)
{
    if (!take(text)) wrong("\"" + std::string{text} + "\"");
}

std::string token_walk::word(std::string_view expected)
{
    if (done() || peek().what != token::kind::word) wrong(expected);
    return tokens_[at_++].text;
}

std::string token_walk::name(std::string_view expected)
{
    constexpr std::array<std::string_view, 19> reserved{"when", "open",   "rise",   "fall",  "while",    "clear", "set",
                                                        "let",  "avoid",  "never",  "keep",  "part",     "pulse", "use",
                                                        "else", "decode", "select", "table", "collector"};
    if (!done() && (is_number(peek().text) || std::ranges::find(reserved, peek().text) != reserved.end()))
        wrong(expected);
    return word(expected);
}

void token_walk::expect_end()
{
    if (!done()) wrong("the end of the statement");
}

}  // namespace tamrix::sim
