#include "chips/scope.h"

#include <algorithm>

namespace tamrix::sim {
namespace {

const part_text& part_of(const chip_text& chip, const use_text& use, int line)
{
    const auto found = std::ranges::find(chip.parts, use.part, &part_text::name);
    if (found == chip.parts.end()) throw chip_error{chip.file, line, "there is no part " + use.part};
    if (found->parameters.size() != use.arguments.size())
        throw chip_error{chip.file, line,
                         "found " + std::to_string(use.arguments.size()) + " names where part " + use.part + " takes " +
                             std::to_string(found->parameters.size())};
    return *found;
}

std::shared_ptr<const scope> scope_of(const part_text& part, const use_text& use, std::size_t number)
{
    auto made = std::make_shared<scope>();
    made->prefix = part.name + std::to_string(number) + ".";
    for (std::size_t i = 0; i < part.parameters.size(); ++i) made->arguments[part.parameters[i]] = use.arguments[i];
    return made;
}

}  // namespace

std::vector<placed_statement> write_out(const chip_text& chip)
{
    std::vector<placed_statement> all;
    const auto outer = std::make_shared<const scope>();
    std::size_t uses = 0;
    for (const auto& text : chip.body) {
        if (text.kind != statement_kind::use) {
            all.push_back({&text, outer});
            continue;
        }
        for (const auto& use : text.uses) {
            const auto& part = part_of(chip, use, text.line);
            const auto inner = scope_of(part, use, ++uses);
            for (const auto& inside : part.body) all.push_back({&inside, inner});
            if (all.size() > 5000) throw chip_error{chip.file, text.line, "chip " + chip.name + " is too large"};
        }
    }
    return all;
}

}  // namespace tamrix::sim
