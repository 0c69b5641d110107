// Turns the statements of one chip into gates: each name is compiled when it is first read.
#pragma once

#include "chips/scope.h"

namespace tamrix::sim {

class compiler {
public:
    explicit compiler(const chip_text& chip);
    circuit run();

private:
    void declare_pins();
    void declare(const placed_statement& from);
    void declare_target(const placed_statement& from, std::size_t bit);
    void outputs(const placed_statement& from);
    void registers(const placed_statement& from);
    void output_pin(const placed_statement& from, std::size_t bit, gate_id value, gate_id enable);
    void pulses(const placed_statement& from);
    void cautions(const placed_statement& from);
    std::size_t pin_named(const placed_statement& from, const std::string& target) const;
    void find_clocks();
    void check_pins() const;

    bits value_of(const expression& text, const scope& where);
    bits operation(const expression& text, const scope& where);
    bits name(const expression& text, const scope& where);
    bits list(const expression& text, const scope& where);
    bits bitwise(const expression& text, const scope& where);
    bits arithmetic(const expression& text, const scope& where);
    bits comparison(const expression& text, const scope& where);
    bits choice(const expression& text, const scope& where);
    bits reduction(const expression& text, const scope& where);
    bits select(const expression& text, const scope& where);
    bits table(const expression& text, const scope& where);
    gate_id one_bit(const expression& text, const scope& where);
    /// The value of a statement, once: as wide as it has targets.
    const bits& statement_value(const placed_statement& from);
    const bits& let_value(const placed_statement& from);
    bits fit(bits value, std::size_t size, int line) const;
    void match(bits& a, bits& b, int line, bool spread) const;
    gate_id combine(term what, gate_id a, gate_id b);
    [[noreturn]] void fail(int line, const std::string& text) const { throw chip_error{chip_.file, line, text}; }

    const chip_text& chip_;
    circuit made_;
    gate_builder build_;
    std::vector<placed_statement> statements_;
    std::map<std::string, symbol> symbols_;
    std::map<const placed_statement*, std::optional<bits>> values_;  // empty while it is being compiled
    std::vector<bool> pin_read_;
    int nested_ = 0;
};

}  // namespace tamrix::sim
