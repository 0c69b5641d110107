// The names of a chip: its pins, wires, registers and shorthands, with the parts in use written out.
#pragma once

#include "chips/circuit.h"
#include "chips/gate_builder.h"

#include <map>
#include <memory>
#include <optional>

namespace tamrix::sim {

/// Where a statement is: at the chip's level, or in one use of a part.
struct scope {
    std::string prefix;                            // in front of names of its own
    std::map<std::string, std::string> arguments;  // of a part: parameter to outer name

    /// The name in the chip as a whole; that of a shorthand or of a part's own wire has the prefix.
    std::string full(const std::string& name) const
    {
        const auto argument = arguments.find(name);
        return argument != arguments.end() ? argument->second : prefix + name;
    }
};

struct placed_statement {
    const statement* text;
    std::shared_ptr<const scope> where;
};

enum class symbol_kind : std::uint8_t { pin_node, wire, reg, let };

struct symbol {
    symbol_kind kind = symbol_kind::pin_node;
    std::size_t index = 0;           // of the pin or register
    const placed_statement* from{};  // of a wire or shorthand
    std::size_t bit = 0;             // of a wire: which target
};

/// All statements of the chip, each use of a part as statements of its own. Throws chip_error.
std::vector<placed_statement> write_out(const chip_text& chip);

}  // namespace tamrix::sim
