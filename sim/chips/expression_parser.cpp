#include "chips/expression_parser.h"

#include <algorithm>

namespace tamrix::sim {
namespace {

constexpr int deepest = 100;

class expression_reader {
public:
    explicit expression_reader(token_walk& in) : in_{in} {}

    expression whole()
    {
        if (++nested_ > deepest) in_.refuse("the expression is nested too deeply");
        auto condition = chain("|", term::any_of, &expression_reader::odd);
        if (in_.take("?")) {
            auto yes = whole();
            in_.expect(":");
            auto no = whole();
            condition = make(term::choice, {std::move(condition), std::move(yes), std::move(no)});
        }
        --nested_;
        return condition;
    }

private:
    using level = expression (expression_reader::*)();

    expression make(term what, std::vector<expression> parts) const
    {
        expression made;
        made.what = what;
        made.line = in_.line();
        for (const auto& part : parts) made.depth = std::max(made.depth, part.depth + 1);
        if (made.depth > deepest) in_.refuse("the expression is nested too deeply");
        made.parts = std::move(parts);
        return made;
    }

    expression chain(std::string_view sign, term what, level next)
    {
        std::vector<expression> parts;
        do parts.push_back((this->*next)());
        while (in_.take(sign));
        return parts.size() == 1 ? std::move(parts.front()) : make(what, std::move(parts));
    }

    expression odd() { return chain("^", term::odd_of, &expression_reader::all); }
    expression all() { return chain("&", term::all_of, &expression_reader::comparison); }

    expression comparison()
    {
        auto left = sum();
        for (const auto& [sign, what] : {std::pair{"==", term::equal}, std::pair{"!=", term::differs},
                                         std::pair{"<", term::below}, std::pair{">", term::above}})
            if (in_.take(sign)) return make(what, {std::move(left), sum()});
        return left;
    }

    expression sum()
    {
        auto left = factor();
        while (in_.is("+") || in_.is("-")) {
            const bool adds = in_.take("+");
            if (!adds) in_.expect("-");
            const auto what = adds ? term::add : term::subtract;
            left = make(what, {std::move(left), factor()});
        }
        return left;
    }

    expression factor()
    {
        if (++nested_ > deepest) in_.refuse("the expression is nested too deeply");
        auto made = unary();
        --nested_;
        return made;
    }

    expression unary()
    {
        for (const auto& [sign, what] : {std::pair{"!", term::invert}, std::pair{"&", term::reduce_all},
                                         std::pair{"|", term::reduce_any}, std::pair{"^", term::reduce_odd}})
            if (in_.take(sign)) return make(what, {factor()});
        if (in_.take("(")) {
            auto inner = whole();
            in_.expect(")");
            return inner;
        }
        if (in_.is("{")) return list();
        if (in_.take("decode")) return decoder();
        if (in_.take("select")) return selector();
        if (in_.take("table")) return table();
        return operand();
    }

    expression operand()
    {
        constexpr std::string_view expected = "a name, a number or a bracket";
        expression made;
        made.line = in_.line();
        if (in_.done() || !is_number(in_.peek().text)) {
            made.what = term::name;
            made.name = in_.name(expected);
            return made;
        }
        const auto digits = in_.word(expected);
        if (digits.size() > 6) in_.refuse("the number " + digits + " is too large");
        made.number = static_cast<std::uint32_t>(std::stoul(digits));
        return made;
    }

    expression list()
    {
        in_.expect("{");
        std::vector<expression> items;
        while (!in_.take("}")) {
            if (in_.peek(1).text == "..") {
                for (const auto& name : range()) {
                    items.emplace_back();
                    items.back().what = term::name;
                    items.back().line = in_.line();
                    items.back().name = name;
                }
            } else {
                items.push_back(factor());
            }
            if (items.size() > 64) in_.refuse("a list has at most 64 items");
        }
        if (items.empty()) in_.refuse("the list is empty");
        return make(term::list, std::move(items));
    }

    expression decoder()
    {
        in_.expect("(");
        auto index = whole();
        in_.expect(")");
        return make(term::decode, {std::move(index)});
    }

    expression selector()
    {
        in_.expect("(");
        auto items = whole();
        in_.expect(":");
        auto index = whole();
        in_.expect(")");
        return make(term::select, {std::move(items), std::move(index)});
    }

    expression table()
    {
        in_.expect("(");
        auto index = whole();
        in_.expect(":");
        auto made = make(term::table, {std::move(index)});
        while (!in_.take(")")) {
            if (made.has_else) in_.wrong("\")\" after the else row");
            made.has_else = in_.take("else");
            auto row = in_.word("a row of 0 and 1");
            if (row.find_first_not_of("01") != std::string::npos)
                in_.refuse("found \"" + row + "\" where a row of 0 and 1 was expected");
            made.rows.push_back(std::move(row));
        }
        return made;
    }

public:
    std::vector<std::string> range()
    {
        const auto from = in_.name("a name");
        in_.expect("..");
        const auto to = in_.name("a name");
        auto names = name_range(from, to);
        if (names.empty())
            in_.refuse("\"" + from + ".." + to +
                       "\" is no range: the names must differ in one number or in the last letter");
        return names;
    }

private:
    token_walk& in_;
    int nested_ = 0;
};

}  // namespace

expression read_expression(token_walk& in) { return expression_reader{in}.whole(); }

std::vector<std::string> read_names(token_walk& in)
{
    if (!in.take("{")) return {in.name("a name")};
    std::vector<std::string> names;
    while (!in.take("}")) {
        if (in.peek(1).text == "..")
            for (auto& name : expression_reader{in}.range()) names.push_back(std::move(name));
        else
            names.push_back(in.name("a name"));
        if (names.size() > 64) in.refuse("a list has at most 64 items");
    }
    if (names.empty()) in.refuse("the list is empty");
    return names;
}

}  // namespace tamrix::sim
