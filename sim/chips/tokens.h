// Cuts a chip file into statements, and these into words and signs.
#pragma once

#include "chips/chip_text.h"

#include <span>

namespace tamrix::sim {

struct token {
    enum class kind : std::uint8_t { word, sign, end };
    kind what = kind::end;
    std::string text;
    int line = 0;
};

/// One statement: a line, and the lines after it as long as a bracket is open or a comma ends the line.
struct statement_line {
    bool indented = false;
    int line = 0;
    std::vector<token> tokens;
    std::string rest;  // everything after the first word, unchanged; a chip's name and description
};

std::vector<statement_line> cut_lines(std::string_view text, std::string_view file);

/// Walks the tokens of one statement; every error says what was found and what was expected.
class token_walk {
public:
    token_walk(const statement_line& from, std::string_view file) : tokens_{from.tokens}, line_{from.line}, file_{file}
    {}

    const token& peek(std::size_t ahead = 0) const
    {
        return at_ + ahead < tokens_.size() ? tokens_[at_ + ahead] : end_;
    }
    bool done() const { return at_ >= tokens_.size(); }
    bool is(std::string_view text) const { return !done() && peek().text == text; }
    bool take(std::string_view text)
    {
        if (!is(text)) return false;
        ++at_;
        return true;
    }
    void expect(std::string_view text);
    /// A word that is a name: not a number, nothing reserved.
    std::string name(std::string_view expected);
    std::string word(std::string_view expected);
    void expect_end();
    [[noreturn]] void wrong(std::string_view expected) const;
    [[noreturn]] void refuse(const std::string& text) const { throw chip_error{file_, line(), text}; }
    int line() const { return done() ? line_ : peek().line; }

private:
    std::span<const token> tokens_;
    std::size_t at_ = 0;
    int line_;
    std::string_view file_;
    token end_;
};

bool is_number(std::string_view word);

/// `q3` to `q0`: q3 q2 q1 q0; also `1A` to `4A` and `QD` to `QA`. Empty if the two form no range.
std::vector<std::string> name_range(const std::string& from, const std::string& to);

}  // namespace tamrix::sim
