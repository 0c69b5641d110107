// The statements of a chip file.
#include "chips/expression_parser.h"

#include <algorithm>

namespace tamrix::sim {
namespace {

constexpr std::size_t longest_name = 11;  // a library record looks for the name with one blank after it, in 12 columns
constexpr std::size_t most_pins = 40;

bool good_device_name(const std::string& name)
{
    return !name.empty() && name.size() <= longest_name && std::ranges::all_of(name, [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    });
}

class chip_parser {
public:
    explicit chip_parser(std::string_view file) : file_{file} {}

    void take(const statement_line& line)
    {
        token_walk in{line, file_};
        if (in.is("chip") && !line.indented) return open_chip(line);
        if (chips_.empty()) in.wrong("\"chip\"");
        auto& chip = chips_.back();
        if (!line.indented) in_part_ = false;
        if (in_part_) return chip.parts.back().body.push_back(body_statement(in));
        if (in.take("alias")) return aliases(in, chip);
        if (in.take("pins")) return pins(in, chip);
        if (in.take("part")) return open_part(in, chip);
        if (chip.pins.empty()) in.wrong("\"pins\" or \"alias\"");
        chip.body.push_back(in.take("use") ? uses(in) : body_statement(in));
    }

    std::vector<chip_text> finish()
    {
        check_last();
        return std::move(chips_);
    }

private:
    void check_last() const
    {
        if (!chips_.empty() && chips_.back().pins.empty())
            throw chip_error{file_, chips_.back().line, "chip " + chips_.back().name + " has no pins"};
    }

    void open_chip(const statement_line& line)
    {
        check_last();
        in_part_ = false;
        chip_text chip;
        chip.file = file_;
        chip.line = line.line;
        const auto from = std::min(line.rest.find_first_not_of(' '), line.rest.size());
        const auto to = std::min(line.rest.find(' ', from), line.rest.size());
        chip.name = line.rest.substr(from, to - from);
        if (!good_device_name(chip.name))
            throw chip_error{file_, line.line,
                             "found \"" + chip.name + "\" where a name of 1 to 11 letters and digits was expected"};
        const auto text = line.rest.find_first_not_of(' ', to);
        if (text != std::string::npos)
            chip.description = line.rest.substr(text, line.rest.find_last_not_of(" \t") + 1 - text);
        chips_.push_back(std::move(chip));
    }

    static void aliases(token_walk& in, chip_text& chip)
    {
        do {
            auto name = in.word("a name");
            if (!good_device_name(name))
                in.refuse("found \"" + name + "\" where a name of 1 to 11 letters and digits was expected");
            chip.aliases.push_back(std::move(name));
        } while (!in.done());
    }

    static void pins(token_walk& in, chip_text& chip)
    {
        if (!chip.pins.empty()) in.refuse("the pins of chip " + chip.name + " stand twice");
        do chip.pins.push_back(in.name("a pin name"));
        while (!in.done());
        if (chip.pins.size() % 2 != 0)
            in.refuse("found " + std::to_string(chip.pins.size()) + " pins where an even number was expected");
        if (chip.pins.size() > most_pins)
            in.refuse("found " + std::to_string(chip.pins.size()) + " pins where at most 40 were expected");
    }

    void open_part(token_walk& in, chip_text& chip)
    {
        part_text part;
        part.name = in.name("a part's name");
        for (const auto& other : chip.parts)
            if (other.name == part.name) in.refuse("the part " + part.name + " stands twice");
        in.expect("(");
        while (!in.take(")")) part.parameters.push_back(in.name("a parameter or \")\""));
        in.expect_end();
        chip.parts.push_back(std::move(part));
        in_part_ = true;
    }

    static statement uses(token_walk& in)
    {
        statement made;
        made.kind = statement_kind::use;
        made.line = in.line();
        do {
            use_text use;
            use.part = in.name("a part's name");
            in.expect("(");
            while (!in.take(")")) use.arguments.push_back(in.word("a name, 0, 1 or \")\""));
            made.uses.push_back(std::move(use));
        } while (in.take(","));
        in.expect_end();
        return made;
    }

    static statement body_statement(token_walk& in)
    {
        statement made;
        made.line = in.line();
        if (in.take("let")) {
            made.kind = statement_kind::let;
            made.targets = {in.name("a name")};
            in.expect("=");
            made.value = read_expression(in);
        } else if (in.take("avoid")) {
            made.kind = statement_kind::avoid;
            made.value = read_expression(in);
        } else if (in.take("never")) {
            made.kind = statement_kind::never;
            made.value = read_expression(in);
        } else if (in.take("keep")) {
            made.kind = statement_kind::keep;
            do made.targets.push_back(in.name("a pin name"));
            while (!in.take("while"));
            made.value = read_expression(in);
        } else if (in.take("pulse")) {
            made.kind = statement_kind::pulse;
            do made.targets.push_back(in.name("a pin name"));
            while (!in.done());
        } else {
            made.targets = read_names(in);
            if (in.take(":"))
                clauses(in, made);
            else if (in.take("="))
                equation(in, made);
            else
                in.wrong("\"=\" or \":\"");
        }
        in.expect_end();
        return made;
    }

    static void equation(token_walk& in, statement& made)
    {
        made.value = read_expression(in);
        if (in.take("when")) {
            made.kind = statement_kind::tri_state;
            made.condition = read_expression(in);
        } else if (in.take("open")) {
            in.expect("collector");
            made.kind = statement_kind::open_collector;
        }
    }

    static void clauses(token_walk& in, statement& made)
    {
        made.kind = statement_kind::registers;
        do made.clauses.push_back(clause(in));
        while (in.take(","));
    }

    static clause_text clause(token_walk& in)
    {
        clause_text made;
        made.data.line = in.line();
        if (in.is("rise") || in.is("fall")) {
            const bool rises = in.take("rise");
            if (!rises) in.expect("fall");
            made.when = rises ? trigger::rise : trigger::fall;
            in.expect("(");
            made.condition = read_expression(in);
            in.expect(")");
        } else if (in.take("while")) {
            made.condition = read_expression(in);
        } else if (in.is("clear") || in.is("set")) {
            const bool sets = in.take("set");
            if (!sets) in.expect("clear");
            made.data.number = sets ? 1 : 0;
            made.data.name = "every";  // a 1 for every register, not the number 1
            made.condition = read_expression(in);
            return made;
        } else {
            in.wrong("rise, fall, while, clear or set");
        }
        in.expect("->");
        made.data = read_expression(in);
        return made;
    }

    std::string file_;
    std::vector<chip_text> chips_;
    bool in_part_ = false;
};

}  // namespace

std::vector<chip_text> parse_chips(std::string_view text, std::string_view file)
{
    chip_parser parser{file};
    for (const auto& line : cut_lines(text, file)) parser.take(line);
    return parser.finish();
}

}  // namespace tamrix::sim
