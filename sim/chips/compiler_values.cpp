// The values of expressions, bit by bit.
#include "chips/compiler.h"

namespace tamrix::sim {

bits compiler::value_of(const expression& text, const scope& where)
{
    if (build_.too_many()) fail(text.line, "chip " + chip_.name + " is too large");
    if (++nested_ > 1000) fail(text.line, "too many expressions stand in one another");
    auto value = text.what == term::number ? gate_builder::number(text.number)
                 : text.what == term::name ? name(text, where)
                 : text.what == term::list ? list(text, where)
                                           : operation(text, where);
    --nested_;
    return value;
}

bits compiler::operation(const expression& text, const scope& where)
{
    switch (text.what) {
    case term::invert: {
        auto value = value_of(text.parts[0], where);
        if (value.number) fail(text.line, "the width of a number behind ! is not known");
        for (auto& bit : value.of) bit = build_.invert(bit);
        return value;
    }
    case term::all_of:
    case term::any_of:
    case term::odd_of: return bitwise(text, where);
    case term::add:
    case term::subtract: return arithmetic(text, where);
    case term::choice: return choice(text, where);
    case term::reduce_all:
    case term::reduce_any:
    case term::reduce_odd: return reduction(text, where);
    case term::decode: {
        const auto index = value_of(text.parts[0], where);
        if (index.size() > 6) fail(text.line, "decode takes at most 6 bits");
        return build_.decode(index);
    }
    case term::select: return select(text, where);
    case term::table: return table(text, where);
    default: return comparison(text, where);
    }
}

gate_id compiler::one_bit(const expression& text, const scope& where)
{
    const auto value = value_of(text, where);
    if (value.size() != 1) fail(text.line, "found " + std::to_string(value.size()) + " bits where one was expected");
    return value.of[0];
}

bits compiler::list(const expression& text, const scope& where)
{
    bits made;
    for (const auto& part : text.parts) {
        const auto value = value_of(part, where);
        if (value.number && value.size() > 1) fail(part.line, "a number in a list is 0 or 1");
        made.of.insert(made.of.end(), value.of.begin(), value.of.end());
    }
    if (made.size() > 256) fail(text.line, "a list has at most 256 bits");
    return made;
}

/// A number grows by zeros, a single bit counts for all bits of its neighbour.
bits compiler::fit(bits value, std::size_t size, int line) const
{
    if (value.number && value.size() < size) {
        value.of.insert(value.of.begin(), size - value.size(), gate_builder::zero);
    } else if (value.size() == 1 && size > 1) {
        value.of.assign(size, value.of[0]);
    }
    value.number = false;
    if (value.size() != size)
        fail(line, "found " + std::to_string(value.size()) + " bits where " + std::to_string(size) + " were expected");
    return value;
}

void compiler::match(bits& a, bits& b, int line, bool spread) const
{
    const auto size = std::max(a.size(), b.size());
    const bool numbers = a.number && b.number;
    for (auto* value : {&a, &b}) {
        if (!spread && value->size() == 1) value->number = true;  // one bit is added as a number is
        *value = fit(std::move(*value), size, line);
        value->number = numbers;
    }
}

gate_id compiler::combine(term what, gate_id a, gate_id b)
{
    if (what == term::all_of || what == term::reduce_all) return build_.both(a, b);
    if (what == term::any_of || what == term::reduce_any) return build_.either(a, b);
    return build_.differ(a, b);
}

bits compiler::bitwise(const expression& text, const scope& where)
{
    auto made = value_of(text.parts[0], where);
    for (std::size_t i = 1; i < text.parts.size(); ++i) {
        auto next = value_of(text.parts[i], where);
        match(made, next, text.line, true);
        for (std::size_t bit = 0; bit < made.size(); ++bit)
            made.of[bit] = combine(text.what, made.of[bit], next.of[bit]);
    }
    return made;
}

bits compiler::arithmetic(const expression& text, const scope& where)
{
    auto a = value_of(text.parts[0], where), b = value_of(text.parts[1], where);
    match(a, b, text.line, false);
    if (text.what == term::add) return build_.add(a, b, gate_builder::zero);
    for (auto& bit : b.of) bit = build_.invert(bit);
    return build_.add(a, b, gate_builder::one);
}

bits compiler::comparison(const expression& text, const scope& where)
{
    auto a = value_of(text.parts[0], where), b = value_of(text.parts[1], where);
    match(a, b, text.line, false);
    if (text.what == term::below) return {{build_.below(a, b)}, false};
    if (text.what == term::above) return {{build_.below(b, a)}, false};
    auto differ = gate_builder::zero;
    for (std::size_t bit = 0; bit < a.size(); ++bit)
        differ = build_.either(differ, build_.differ(a.of[bit], b.of[bit]));
    return {{text.what == term::differs ? differ : build_.invert(differ)}, false};
}

bits compiler::choice(const expression& text, const scope& where)
{
    const auto which = one_bit(text.parts[0], where);
    auto yes = value_of(text.parts[1], where), no = value_of(text.parts[2], where);
    match(yes, no, text.line, true);
    for (std::size_t bit = 0; bit < yes.size(); ++bit) yes.of[bit] = build_.choose(which, yes.of[bit], no.of[bit]);
    return yes;
}

bits compiler::reduction(const expression& text, const scope& where)
{
    const auto value = value_of(text.parts[0], where);
    auto made = value.of[0];
    for (std::size_t bit = 1; bit < value.size(); ++bit) made = combine(text.what, made, value.of[bit]);
    return {{made}, false};
}

bits compiler::select(const expression& text, const scope& where)
{
    auto items = value_of(text.parts[0], where);
    const auto index = value_of(text.parts[1], where);
    if (index.size() > 6 || items.size() != std::size_t{1} << index.size())
        fail(text.line, "found " + std::to_string(items.size()) + " items for a selection by " +
                            std::to_string(index.size()) + " bits");
    for (auto bit = index.size(); bit-- > 0;) {
        bits half;
        for (std::size_t i = 0; i < items.size(); i += 2)
            half.of.push_back(build_.choose(index.of[bit], items.of[i + 1], items.of[i]));
        items = std::move(half);
    }
    return items;
}

bits compiler::table(const expression& text, const scope& where)
{
    const auto index = value_of(text.parts[0], where);
    if (index.size() > 6) fail(text.line, "a table takes at most 6 bits");
    const auto lines = std::size_t{1} << index.size();
    const auto given = text.rows.size();
    if (given == 0 || given > lines + (text.has_else ? 1 : 0) || (given < lines && !text.has_else))
        fail(text.line, "found " + std::to_string(given) + " rows where " + std::to_string(lines) + " were expected");
    const auto chosen = build_.decode(index);
    bits made{std::vector<gate_id>(text.rows[0].size(), gate_builder::zero), false};
    for (std::size_t line = 0; line < lines; ++line) {
        const auto& row = line + (text.has_else ? 1 : 0) < given ? text.rows[line] : text.rows.back();
        if (row.size() != made.size()) fail(text.line, "the row " + row + " has not as many places as the first one");
        for (std::size_t bit = 0; bit < row.size(); ++bit)
            if (row[bit] == '1') made.of[bit] = build_.either(made.of[bit], chosen.of[line]);
    }
    return made;
}

}  // namespace tamrix::sim
