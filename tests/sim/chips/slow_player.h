// Plays rows on a part, one pin after the other: slow, and with nothing in common with the maker of the rows.
#pragma once

#include "chip_socket.h"

#include <algorithm>
#include <numeric>
#include <random>

namespace tamrix::tests {

class slow_player {
public:
    slow_player(const std::string& name, std::size_t pins)
        : part_{sim::make_part(*sim::find_chip(all_chips(), name))}, tester_(pins, sim::level::open), drives_(tester_)
    {}

    /// A socket without a chip.
    explicit slow_player(std::size_t pins) : tester_(pins, sim::level::open), drives_(tester_) {}

    int stuck_pin = -1;
    sim::level stuck_at = sim::level::low;

    void power_up() { part_->power_up(); }
    void drive(std::size_t pin, sim::level level)
    {
        tester_[pin] = level;
        settle();
    }
    /// Whether all letters are met. `order` holds the pins in the order in which they change.
    bool play(const std::string& row, const std::vector<std::size_t>& order)
    {
        for (const auto pin : order) drive(pin, level_of(row[pin]));
        for (const auto level : {sim::level::high, sim::level::low})
            for (const auto pin : order)
                if (row[pin] == 'C') drive(pin, level);
        bool met = true;
        for (std::size_t pin = 0; pin < row.size(); ++pin) {
            const auto high = node(pin) == sim::level::high;
            if (row[pin] == 'H' || row[pin] == 'Z') met = met && high;
            if (row[pin] == 'L') met = met && !high;
        }
        return met;
    }
    bool fights() const
    {
        for (std::size_t pin = 0; pin < tester_.size(); ++pin)
            if (tester_[pin] != sim::level::open && drives_[pin] != sim::level::open) return true;
        return false;
    }

private:
    static sim::level level_of(char letter)
    {
        return letter == '1' ? sim::level::high : letter == '0' || letter == 'C' ? sim::level::low : sim::level::open;
    }
    sim::level node(std::size_t pin) const
    {
        if (tester_[pin] != sim::level::open) return tester_[pin];
        if (static_cast<int>(pin) == stuck_pin) return stuck_at;
        return drives_[pin] != sim::level::open ? drives_[pin] : sim::level::high;
    }
    void settle()
    {
        if (part_ == nullptr) return;
        for (int round = 0; round < 20; ++round) {
            std::vector<sim::level> nodes;
            for (std::size_t pin = 0; pin < tester_.size(); ++pin)
                nodes.push_back(static_cast<int>(pin) == stuck_pin ? stuck_at : node(pin));
            const auto before = drives_;
            part_->settle(nodes, drives_);
            if (drives_ == before) return;
        }
    }

    std::unique_ptr<sim::part> part_;
    std::vector<sim::level> tester_, drives_;
};

/// Upward, downward, by ports from the bottom of the socket and back, and two that are mixed up.
inline std::vector<std::vector<std::size_t>> orders(std::size_t pins, unsigned random_start)
{
    std::vector<std::size_t> upward(pins);
    std::iota(upward.begin(), upward.end(), std::size_t{0});
    std::vector<std::vector<std::size_t>> made{upward};
    made.emplace_back(upward.rbegin(), upward.rend());
    auto ports = upward;
    const auto group = [&](std::size_t pin) {
        return pin < pins / 2 ? (pins / 2 - 1 - pin) / 4 : (pin - pins / 2) / 4;
    };
    std::ranges::stable_sort(ports, {}, group);
    made.push_back(ports);
    made.emplace_back(ports.rbegin(), ports.rend());
    std::mt19937 random{random_start};
    for (int i = 0; i < 2; ++i) {
        for (std::size_t last = pins - 1; last > 0; --last) std::swap(upward[last], upward[random() % (last + 1)]);
        made.push_back(upward);
    }
    return made;
}

/// Leaves a part in some state: random levels at the inputs of row 0, many times.
inline void stir(slow_player& player, const std::string& row, unsigned random_start)
{
    std::mt19937 random{random_start};
    for (int i = 0; i < 300; ++i) {
        const auto pin = random() % row.size();
        if (row[pin] == '1' || row[pin] == '0' || row[pin] == 'C')
            player.drive(pin, random() % 2 != 0 ? sim::level::high : sim::level::low);
    }
}

}  // namespace tamrix::tests
