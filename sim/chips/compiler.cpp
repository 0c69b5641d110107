#include "chips/compiler.h"

#include "chips/tokens.h"

#include <algorithm>
#include <array>

namespace tamrix::sim {
namespace {

bool is_output(statement_kind kind)
{
    return kind == statement_kind::wire || kind == statement_kind::tri_state || kind == statement_kind::open_collector;
}

pin_role role_of(const std::string& name)
{
    if (name == "VCC" || name == "VDD") return pin_role::vcc;
    if (name == "GND" || name == "VSS") return pin_role::gnd;
    return name == "NC" ? pin_role::none : pin_role::input;
}

}  // namespace

compiler::compiler(const chip_text& chip) : chip_{chip}, build_{made_.gates}, statements_{write_out(chip)}
{
    declare_pins();
    for (const auto& from : statements_) declare(from);
}

void compiler::declare_pins()
{
    for (std::size_t i = 0; i < chip_.pins.size(); ++i) {
        const auto& name = chip_.pins[i];
        pin made{.name = name, .role = role_of(name)};
        if (made.role == pin_role::vcc || made.role == pin_role::gnd) {
            auto& place = made.role == pin_role::vcc ? made_.vcc : made_.gnd;
            if (place >= 0) fail(chip_.line, "chip " + chip_.name + " has a second pin " + name);
            place = static_cast<int>(i);
        } else if (made.role == pin_role::input &&
                   !symbols_.try_emplace(name, symbol{symbol_kind::pin_node, i, nullptr, 0}).second) {
            fail(chip_.line, "chip " + chip_.name + " has a second pin " + name);
        }
        made_.pins.push_back(made);
    }
    if (made_.vcc < 0) fail(chip_.line, "chip " + chip_.name + " has no pin VCC or VDD");
    if (made_.gnd < 0) fail(chip_.line, "chip " + chip_.name + " has no pin GND or VSS");
    pin_read_.resize(chip_.pins.size());
}

void compiler::declare(const placed_statement& from)
{
    if (from.text->kind == statement_kind::let) {
        const auto name = from.where->full(from.text->targets.front());
        if (!symbols_.try_emplace(name, symbol{symbol_kind::let, 0, &from, 0}).second)
            fail(from.text->line, name + " stands twice");
        return;
    }
    if (!is_output(from.text->kind) && from.text->kind != statement_kind::registers) return;
    for (std::size_t bit = 0; bit < from.text->targets.size(); ++bit) declare_target(from, bit);
}

void compiler::declare_target(const placed_statement& from, std::size_t bit)
{
    const auto line = from.text->line;
    const auto name = from.where->full(from.text->targets[bit]);
    const bool is_register = from.text->kind == statement_kind::registers;
    symbol made{is_register ? symbol_kind::reg : symbol_kind::wire, made_.registers.size(), &from, bit};
    if (is_register) made_.registers.push_back({name, {}});
    if (is_number(name)) fail(line, "the number " + name + " stands where a name is driven");
    const auto [place, fresh] = symbols_.try_emplace(name, made);
    if (fresh) {
        if (role_of(name) != pin_role::input) fail(line, name + " cannot be driven");
        if (!is_register && from.text->kind != statement_kind::wire)
            fail(line, name + " is no pin and cannot be let go");
        return;
    }
    if (place->second.kind != symbol_kind::pin_node || made_.pins[place->second.index].role != pin_role::input)
        fail(line, name + " is driven twice");
    auto& at = made_.pins[place->second.index];
    at.role = pin_role::output;
    at.open_collector = from.text->kind == statement_kind::open_collector;
    // What a pin reads that is let go at times is the level at the pin; the others read what they drive.
    if (is_register)
        at.value = build_.input(gate_kind::reg, static_cast<gate_id>(made.index)), at.enable = gate_builder::one;
    if (is_register || from.text->kind == statement_kind::wire) place->second = made;
}

circuit compiler::run()
{
    for (const auto& from : statements_) {
        if (is_output(from.text->kind)) outputs(from);
        if (from.text->kind == statement_kind::registers) registers(from);
        if (from.text->kind == statement_kind::avoid) made_.avoided.push_back(one_bit(from.text->value, *from.where));
        if (from.text->kind == statement_kind::let) let_value(from);
        if (from.text->kind == statement_kind::pulse) pulses(from);
        if (from.text->kind == statement_kind::never || from.text->kind == statement_kind::keep) cautions(from);
    }
    find_clocks();
    check_pins();
    return std::move(made_);
}

void compiler::output_pin(const placed_statement& from, std::size_t bit, gate_id value, gate_id enable)
{
    const auto name = from.where->full(from.text->targets[bit]);
    const auto found = std::ranges::find(made_.pins, name, &pin::name);
    if (found == made_.pins.end()) return;
    found->value = value;
    found->enable = enable;
}

void compiler::outputs(const placed_statement& from)
{
    const auto value = statement_value(from);
    auto enable = bits{std::vector<gate_id>(value.size(), gate_builder::one), false};
    if (from.text->kind == statement_kind::tri_state)
        enable = fit(value_of(from.text->condition, *from.where), value.size(), from.text->line);
    for (std::size_t bit = 0; bit < value.size(); ++bit) {
        const bool open = from.text->kind == statement_kind::open_collector;
        output_pin(from, bit, open ? gate_builder::zero : value.of[bit],
                   open ? build_.invert(value.of[bit]) : enable.of[bit]);
    }
}

void compiler::registers(const placed_statement& from)
{
    const auto count = from.text->targets.size();
    std::vector<std::size_t> places;
    for (const auto& target : from.text->targets) places.push_back(symbols_.at(from.where->full(target)).index);
    for (const bool holding : {true, false}) {
        for (const auto& text : from.text->clauses) {
            if ((text.when == trigger::hold) != holding) continue;
            auto condition = value_of(text.condition, *from.where);
            if (condition.size() != 1 && !holding) fail(text.condition.line, "a clock has one bit");
            condition = fit(std::move(condition), count, text.condition.line);
            auto data = text.data.name == "every" && text.data.what == term::number
                            ? bits{{text.data.number != 0 ? gate_builder::one : gate_builder::zero}, false}
                            : value_of(text.data, *from.where);
            data = fit(std::move(data), count, text.data.line);
            for (std::size_t bit = 0; bit < count; ++bit)
                made_.registers[places[bit]].clauses.push_back({text.when, condition.of[bit], data.of[bit]});
        }
    }
}

void compiler::pulses(const placed_statement& from)
{
    for (const auto& target : from.text->targets) made_.pins[pin_named(from, target)].pulse_only = true;
}

void compiler::cautions(const placed_statement& from)
{
    caution made{one_bit(from.text->value, *from.where), {}};
    for (const auto& target : from.text->targets) made.pins.push_back(pin_named(from, target));
    made_.cautions.push_back(std::move(made));
}

std::size_t compiler::pin_named(const placed_statement& from, const std::string& target) const
{
    const auto found = std::ranges::find(made_.pins, from.where->full(target), &pin::name);
    if (found == made_.pins.end()) fail(from.text->line, target + " is no pin");
    return static_cast<std::size_t>(found - made_.pins.begin());
}

void compiler::find_clocks()
{
    std::vector<bool> reached(made_.gates.size());
    for (const auto& moved : made_.registers)
        for (const auto& how : moved.clauses)
            if (how.when != trigger::hold) reached[how.condition] = true;
    for (auto id = made_.gates.size(); id-- > 0;) {
        const auto& at = made_.gates[id];
        if (!reached[id]) continue;
        if (at.kind == gate_kind::pin) made_.pins[at.a].clock = true;
        if (at.kind >= gate_kind::invert) reached[at.a] = true;
        if (at.kind > gate_kind::invert) reached[at.b] = true;
    }
}

void compiler::check_pins() const
{
    for (std::size_t i = 0; i < made_.pins.size(); ++i) {
        const auto& at = made_.pins[i];
        if (at.role == pin_role::input && !pin_read_[i])
            fail(chip_.line, "pin " + at.name + " of chip " + chip_.name + " is neither read nor driven (call it NC)");
        if (at.pulse_only && !at.clock) fail(chip_.line, "pin " + at.name + " of chip " + chip_.name + " is no clock");
    }
}

const bits& compiler::statement_value(const placed_statement& from)
{
    const auto [place, fresh] = values_.try_emplace(&from);
    if (fresh) {
        auto value = fit(value_of(from.text->value, *from.where), from.text->targets.size(), from.text->line);
        place->second = std::move(value);
    }
    if (!place->second)
        fail(from.text->line, from.text->targets.front() + " depends on itself without a register between");
    return *place->second;
}

const bits& compiler::let_value(const placed_statement& from)
{
    const auto [place, fresh] = values_.try_emplace(&from);
    if (fresh) {
        auto value = value_of(from.text->value, *from.where);
        place->second = std::move(value);
    }
    if (!place->second) fail(from.text->line, from.text->targets.front() + " depends on itself");
    return *place->second;
}

bits compiler::name(const expression& text, const scope& where)
{
    const auto name = where.full(text.name);
    if (name == "0" || name == "1") return {{name == "1" ? gate_builder::one : gate_builder::zero}, false};
    auto found = symbols_.find(name);
    if (found == symbols_.end()) found = symbols_.find(text.name);  // a part sees the chip around it
    if (found == symbols_.end())
        fail(text.line, "found \"" + text.name + "\", which is no pin, no wire and no register of the chip");
    const auto& at = found->second;
    if (at.kind == symbol_kind::reg) return {{build_.input(gate_kind::reg, static_cast<gate_id>(at.index))}, false};
    if (at.kind == symbol_kind::wire) return {{statement_value(*at.from).of[at.bit]}, false};
    if (at.kind == symbol_kind::let) return let_value(*at.from);
    auto& read = made_.pins[at.index];
    pin_read_[at.index] = true;
    if (read.role == pin_role::output) read.role = pin_role::both;
    return {{build_.input(gate_kind::pin, static_cast<gate_id>(at.index))}, false};
}

circuit compile(const chip_text& chip) { return compiler{chip}.run(); }

}  // namespace tamrix::sim
