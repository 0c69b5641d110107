// The statements of an SVF file as words: its lexical rules, which know no command.
#pragma once

#include "verify/characters.h"
#include "verify/verification.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tamrix {

/// A word, or what is in parentheses.
struct svf_word {
    static constexpr std::size_t most_kept = 0x10000;

    std::string text{};      // upper case, up to `most_kept` characters; that in parentheses keeps its blanks
    std::uint64_t line = 0;  // where it begins
    bool in_parentheses = false;
    std::uint64_t length = 0;  // characters without blanks
    int first = 0;             // the first of them
    int no_digit = 0;          // the first of them that is no hexadecimal digit; 0 if there is none
};

class svf_words {
public:
    svf_words(byte_source& from, const std::string& name, verification& result)
        : in_{from}, name_{name}, result_{result}
    {}

    /// The words of the next statement that has its ";", without it; none at the end of the file.
    std::optional<std::vector<svf_word>> next();
    std::uint64_t line() const { return in_.line(); }
    void remark(std::uint64_t line, std::string found, std::string expected)
    {
        result_.add({.file = name_, .line = line, .found = std::move(found), .expected = std::move(expected)});
    }

private:
    int after_blanks();
    bool pass_comment();
    bool read_parentheses(svf_word& word);
    void read_word(svf_word& word);

    characters in_;
    const std::string& name_;
    verification& result_;
};

}  // namespace tamrix
