// One chip on the bench of a test: pins by name, levels as 0 and 1.
#pragma once

#include "chips/chip.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <stdexcept>
#include <string>

namespace tamrix::tests {

inline const std::vector<sim::chip>& all_chips()
{
    static const auto chips = sim::load_chips(sim::chip_files(std::filesystem::path{TAMRIX_DATA_FOLDER} / "chips"));
    return chips;
}

class chip_socket {
public:
    explicit chip_socket(const std::string& name) : chip_socket{chip_named(name)} {}

    /// The first chip of a text in the chip language.
    static chip_socket of_text(const std::string& text)
    {
        return chip_socket{sim::read_chips(text, "test.chip").at(0)};
    }

    explicit chip_socket(const sim::chip& from) : part_{sim::make_part(from)}
    {
        for (std::size_t i = 0; i < from.plan->pins.size(); ++i) pins_[from.plan->pins[i].name] = i;
        drives_.resize(static_cast<std::size_t>(part_->pins()), sim::level::open);
        tester_ = drives_;
        part_->power_up();
        settle();
    }

    /// Drives one pin; the others keep their level.
    chip_socket& set(const std::string& pin, int level)
    {
        tester_.at(number(pin)) = level != 0 ? sim::level::high : sim::level::low;
        settle();
        return *this;
    }
    /// The binary digits of `value` go to the pins, the most significant to the first.
    chip_socket& put(std::initializer_list<std::string> pins, unsigned value)
    {
        auto shift = pins.size();
        for (const auto& pin : pins) set(pin, static_cast<int>(value >> --shift & 1u));
        return *this;
    }
    chip_socket& release(const std::string& pin)
    {
        tester_.at(number(pin)) = sim::level::open;
        settle();
        return *this;
    }
    chip_socket& pulse(const std::string& pin) { return set(pin, 0).set(pin, 1).set(pin, 0); }

    /// What is read at the pin; nothing driven is pulled up.
    int at(const std::string& pin) const { return node(number(pin)) == sim::level::high ? 1 : 0; }
    unsigned read(std::initializer_list<std::string> pins) const
    {
        unsigned value = 0;
        for (const auto& pin : pins) value = value * 2 + static_cast<unsigned>(at(pin));
        return value;
    }
    bool off(const std::string& pin) const { return drives_.at(number(pin)) == sim::level::open; }

private:
    static const sim::chip& chip_named(const std::string& name)
    {
        const auto* found = sim::find_chip(all_chips(), name);
        if (found == nullptr) throw std::runtime_error{"there is no chip " + name};
        return *found;
    }
    std::size_t number(const std::string& pin) const { return pins_.at(pin); }
    sim::level node(std::size_t pin) const
    {
        if (tester_[pin] != sim::level::open) return tester_[pin];
        return drives_[pin] != sim::level::open ? drives_[pin] : sim::level::high;
    }
    void settle()
    {
        for (int round = 0; round < 10; ++round) {
            std::vector<sim::level> nodes;
            for (std::size_t pin = 0; pin < tester_.size(); ++pin) nodes.push_back(node(pin));
            const auto before = drives_;
            part_->settle(nodes, drives_);
            if (before == drives_) return;
        }
    }

    std::unique_ptr<sim::part> part_;
    std::map<std::string, std::size_t> pins_;
    std::vector<sim::level> tester_, drives_;
};

}  // namespace tamrix::tests
