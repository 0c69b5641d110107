// One statement of an SVF file, taken word by word. After the first word that is wrong it takes no more: one fault has
// one remark.
#pragma once

#include "verify/svf_words.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix {

class svf_statement {
public:
    /// `words` is not empty. Both have to outlive it.
    svf_statement(const std::vector<svf_word>& words, svf_words& remarks) : words_{words}, remarks_{remarks} {}

    bool is_wrong() const { return wrong_; }
    bool at_end() const { return wrong_ || at_ == words_.size(); }
    bool at_last() const { return at_ + 1 >= words_.size(); }
    bool next_is(std::string_view text) const { return has(at_, text); }
    bool second_is(std::string_view text) const { return has(at_ + 1, text); }
    bool next_is_number() const;
    bool next_is_name() const;  // begins with a letter

    // What these return is empty where the word is wrong; `expected` then says what it should be.
    std::string take_word(std::string_view expected);
    std::string take_one_of(std::span<const std::string_view> allowed, std::string_view expected);
    std::string take_one_of(std::initializer_list<std::string_view> allowed, std::string_view expected)
    {
        return take_one_of(std::span{allowed.begin(), allowed.size()}, expected);
    }
    std::optional<std::uint64_t> take_whole_number(std::string_view expected);
    std::optional<double> take_number(std::string_view expected);
    std::optional<double> take_seconds();
    const svf_word* take_parentheses(std::string_view expected);
    bool take_state();
    bool take_stable_state();

    void wrong(std::string found, std::string expected);  // in the line of the word taken last
    void wrong_before(const std::string& expected);       // the word taken last
    void wrong_next(std::string_view expected);           // the next word, or the end
    void wrong_at_end(const std::string& expected);
    void expect_end()
    {
        if (!at_end()) wrong_next("; or a word that goes there");
    }

private:
    bool has(std::size_t index, std::string_view text) const
    {
        return !wrong_ && index < words_.size() && !words_[index].in_parentheses && words_[index].text == text;
    }
    void remark(std::uint64_t line, std::string found, std::string expected);

    const std::vector<svf_word>& words_;
    svf_words& remarks_;
    std::size_t at_ = 0;
    bool wrong_ = false;
};

}  // namespace tamrix
