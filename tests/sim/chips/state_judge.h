// Holds a chip against a model of it, state by state and input by input. The models are written from the diagrams of
// the data sheets and share nothing with the chip files.
#pragma once

#include "chip_socket.h"
#include "chips/lanes.h"

#include <algorithm>
#include <functional>

namespace tamrix::tests {

using names = std::vector<std::string>;

/// Levels by name: pins, and registers that are no pin.
struct levels : std::map<std::string, bool> {
    /// The first name is the most significant digit.
    unsigned number(const names& of) const
    {
        unsigned value = 0;
        for (const auto& name : of) value = value * 2 + (at(name) ? 1u : 0u);
        return value;
    }
    void put(const names& where, unsigned value)
    {
        auto shift = where.size();
        for (const auto& name : where) (*this)[name] = (value >> --shift & 1u) != 0;
    }
};

struct chip_model {
    std::string chip;
    names registers, inputs;
    /// `now` has the new inputs and the old registers; registers and outputs are to be brought up to date. `was` is
    /// what stood before, the same as `now` where the supply has just come on.
    std::function<void(levels& now, const levels& was)> act;
};

/// The chip with any state in its registers, which no socket can give it.
class opened_chip {
public:
    explicit opened_chip(const std::string& name) : plan_{sim::find_chip(all_chips(), name)->plan}, lane_{plan_} {}

    /// What `from` does not name is 0.
    void start(const levels& from)
    {
        const auto level = [&](const auto& one) {
            const auto found = from.find(one.name);
            return sim::word{found != from.end() && found->second};
        };
        std::vector<sim::word> states;
        for (const auto& one : plan_->registers) states.push_back(level(one));
        lane_.power_up(states);
        for (std::size_t i = 0; i < plan_->pins.size(); ++i) lane_.set_node(i, level(plan_->pins[i]));
        lane_.settle();
    }
    void change(const std::string& name, bool level)
    {
        lane_.set_node(pin(name), level ? 1 : 0);
        lane_.settle();
    }
    bool at(const std::string& name) const
    {
        const auto found = std::ranges::find(plan_->registers, name, &sim::reg::name);
        const auto word = found != plan_->registers.end()
                              ? lane_.state(static_cast<std::size_t>(found - plan_->registers.begin()))
                              : lane_.level(pin(name));
        return (word & 1) != 0;
    }

private:
    std::size_t pin(const std::string& name) const
    {
        const auto found = std::ranges::find(plan_->pins, name, &sim::pin::name);
        if (found == plan_->pins.end()) throw std::runtime_error{"there is no pin " + name};
        return static_cast<std::size_t>(found - plan_->pins.begin());
    }

    std::shared_ptr<const sim::circuit> plan_;
    sim::lanes lane_;
};

/// The registers and outputs in which the chip differs from the model, in words; empty where nothing does.
inline std::string difference(const opened_chip& chip, const levels& now, const names& inputs)
{
    std::string text;
    for (const auto& [name, level] : now)
        if (std::ranges::find(inputs, name) == inputs.end() && chip.at(name) != level)
            text += name + (level ? " is 0, not 1 " : " is 1, not 0 ");
    return text;
}

/// Every state under every combination of the inputs, and from each of them every change of one input.
inline void judge(const chip_model& model)
{
    opened_chip chip{model.chip};
    for (unsigned state = 0; state < 1u << model.registers.size(); ++state) {
        for (unsigned inputs = 0; inputs < 1u << model.inputs.size(); ++inputs) {
            levels first;
            first.put(model.registers, state);
            first.put(model.inputs, inputs);
            chip.start(first);
            levels was = first;
            model.act(was, first);
            const auto where = model.chip + " state " + std::to_string(state) + " inputs " + std::to_string(inputs);
            ASSERT_EQ(difference(chip, was, model.inputs), "") << where;
            for (const auto& input : model.inputs) {
                levels now = was;
                now[input] = !was[input];
                chip.start(first);
                chip.change(input, now[input]);
                model.act(now, was);
                ASSERT_EQ(difference(chip, now, model.inputs), "") << where << ", then " << input << " changes";
            }
        }
    }
}

}  // namespace tamrix::tests
