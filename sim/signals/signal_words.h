// The words of a signal's text, taken from the front, each with its place for an error.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::sim {

/// Says where, what was found there, and what is possible there.
class signal_error : public std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

class signal_words {
public:
    /// Blanks separate words. A word in quotation marks may contain blanks, and \" \\ \r \n \t and \x41 for a byte.
    /// Throws signal_error where quotation marks are not closed or what follows a \ is something else.
    explicit signal_words(std::string_view text);

    bool ended() const { return next_ == words_.size(); }
    bool next_is(std::string_view word) const;
    /// Takes the word if it comes next.
    bool take(std::string_view word);
    /// Takes any word. All that follow throw signal_error where something else comes next.
    std::string any(const char* expected);
    std::string quoted(const char* expected);
    double number(double lowest, double highest);
    int whole(int lowest, int highest);
    /// A time in seconds, 0 to 1000.
    double seconds();
    /// Up to a few hexadecimal digits with this highest value; none if the next word is something else.
    std::optional<std::uint8_t> hex(unsigned highest);
    /// "P21" or "P21..P24" as a mask; none if the next word does not begin like that.
    std::optional<std::uint8_t> pins();
    void end() const;
    /// About the next word.
    [[noreturn]] void fail(const std::string& expected) const;
    /// About the word that was taken last, where it is a good one in itself.
    [[noreturn]] void refuse(const std::string& reason) const;

private:
    struct placed_word {
        std::string text;
        std::size_t column;  // from 1
        bool is_quoted;
    };
    std::string read_quoted(std::size_t& at) const;
    [[noreturn]] void fail_at(std::size_t column, const std::string& what) const;

    std::string text_;
    std::vector<placed_word> words_;
    std::size_t next_ = 0;
};

}  // namespace tamrix::sim
