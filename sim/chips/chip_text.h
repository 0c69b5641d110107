// What a chip file says, word for word: the tree that the parser makes.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::sim {

/// A chip file is wrong: "FILE:LINE: what was found, what was expected". Line 0: the file as a whole.
class chip_error : public std::runtime_error {
public:
    chip_error(std::string_view file, int line, std::string_view text)
        : std::runtime_error{std::string{file} + (line > 0 ? ":" + std::to_string(line) : "") + ": " +
                             std::string{text}}
    {}
};

enum class term : std::uint8_t {
    name,
    number,
    list,  // {a b c}, the leftmost is the most significant
    invert,
    all_of,  // &
    any_of,  // |
    odd_of,  // ^
    add,
    subtract,
    equal,
    differs,
    below,
    above,
    choice,  // a ? b : c
    reduce_all,
    reduce_any,
    reduce_odd,
    decode,
    select,
    table,
};

struct expression {
    term what = term::number;
    int line = 0;
    int depth = 1;  // of the tree; bounded, since trees are walked by recursion
    std::string name;
    std::uint32_t number = 0;
    std::vector<expression> parts;
    std::vector<std::string> rows;  // of a table; the last one is the `else` row if `has_else`
    bool has_else = false;
};

enum class trigger : std::uint8_t { rise, fall, hold };

struct clause_text {
    trigger when = trigger::hold;
    expression condition, data;
};

struct use_text {
    std::string part;
    std::vector<std::string> arguments;
};

enum class statement_kind : std::uint8_t {
    wire,
    tri_state,
    open_collector,
    registers,
    let,
    avoid,
    never,
    keep,
    pulse,
    use
};

struct statement {
    statement_kind kind = statement_kind::wire;
    int line = 0;
    std::vector<std::string> targets;
    expression value, condition;
    std::vector<clause_text> clauses;
    std::vector<use_text> uses;
};

struct part_text {
    std::string name;
    std::vector<std::string> parameters;
    std::vector<statement> body;
};

struct chip_text {
    std::string file;
    int line = 0;
    std::string name, description;
    std::vector<std::string> aliases, pins;
    std::vector<part_text> parts;
    std::vector<statement> body;
};

/// The stanzas of a file, in order. `file` is its name in errors. Throws chip_error.
std::vector<chip_text> parse_chips(std::string_view text, std::string_view file);

}  // namespace tamrix::sim
