#include "verify/svf_words.h"

#include "files/hex_digits.h"

namespace tamrix {

namespace {

constexpr std::size_t most_words = 100'000;

int upper(int one) { return one >= 'a' && one <= 'z' ? one - 'a' + 'A' : one; }

void append(svf_word& word, int one)
{
    if (word.text.size() < svf_word::most_kept) word.text.push_back(static_cast<char>(upper(one)));
    if (is_blank(one)) return;
    if (word.length++ == 0) word.first = one;
    if (word.no_digit == 0 && hex_digits::digit(static_cast<std::uint8_t>(one)) > 0xF) word.no_digit = one;
}

}  // namespace

std::optional<std::vector<svf_word>> svf_words::next()
{
    std::vector<svf_word> words;
    for (;;) {
        const int one = after_blanks();
        const std::uint64_t begin = line();
        if (one == characters::end) {
            if (!words.empty()) remark(begin, character_name(one), ";");
            return std::nullopt;
        }
        if (one == ';') {
            in_.get();
            if (!words.empty()) return words;
            remark(begin, "; without a statement", "a statement");
            continue;
        }
        if (words.size() == most_words) {
            remark(begin, "a statement of more than " + std::to_string(most_words) + " words", ";");
            words.clear();
        }
        svf_word& word = words.emplace_back(svf_word{.line = begin, .in_parentheses = one == '('});
        if (!word.in_parentheses) {
            read_word(word);
        } else if (!read_parentheses(word)) {
            words.clear();
        }
    }
}

/// The next character that is neither blank nor in a comment; it stays the next one.
int svf_words::after_blanks()
{
    while (is_blank(in_.peek()) || pass_comment()) {
        if (is_blank(in_.peek())) in_.get();
    }
    return in_.peek();
}

/// From "!" or "//" to the end of the line. A single "/" is taken for two: no word has one.
bool svf_words::pass_comment()
{
    const std::uint64_t begin = line();
    if (in_.peek() != '!' && in_.peek() != '/') return false;
    if (in_.get() == '/' && in_.peek() != '/') remark(begin, "/", "//");
    while (in_.peek() != '\n' && in_.peek() != '\r' && in_.peek() != characters::end) in_.get();
    return true;
}

void svf_words::read_word(svf_word& word)
{
    constexpr std::string_view ends = "();!/";
    do {
        append(word, in_.get());
    } while (in_.peek() != characters::end && !is_blank(in_.peek()) &&
             ends.find(static_cast<char>(in_.peek())) == std::string_view::npos);
}

/// False where the statement or the file ends inside; that end is passed over.
bool svf_words::read_parentheses(svf_word& word)
{
    in_.get();
    for (;;) {
        const int one = in_.peek();
        if (one == ')') return in_.get() == ')';
        if (one == ';' || one == characters::end) {
            remark(line(), one == ';' ? ";" : character_name(one), ")");
            in_.get();
            return false;
        }
        if (one == '!' || one == '/') {
            pass_comment();
        } else {
            append(word, in_.get());
        }
    }
}

}  // namespace tamrix
