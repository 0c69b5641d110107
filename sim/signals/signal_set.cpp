#include "sim/signals/signal_set.h"

#include "sim/signals/signal_text.h"

#include <utility>

namespace tamrix::sim {

namespace {

/// The pins that come next, one mask each, none of them twice.
std::vector<std::uint8_t> pins_of(signal_words& words, std::uint8_t taken)
{
    std::vector<std::uint8_t> pins;
    while (const auto mask = words.pins()) {
        for (int bit = 0; bit < 8; ++bit) {
            const auto pin = static_cast<std::uint8_t>(*mask & 1u << bit);
            if (pin == 0) continue;
            if ((taken & pin) != 0) words.refuse("P" + std::to_string(21 + bit) + " has a signal already");
            taken = static_cast<std::uint8_t>(taken | pin);
            pins.push_back(pin);
        }
    }
    return pins;
}

std::uint8_t all_of(const std::vector<std::uint8_t>& pins)
{
    unsigned mask = 0;
    for (const std::uint8_t pin : pins) mask |= pin;
    return static_cast<std::uint8_t>(mask);
}

}  // namespace

void signal_set::add_lead(signal_words& words)
{
    if (!words.take("23")) words.fail("\"23\", the pin of the generator,");
    const auto pins = pins_of(words, pins_ | leads_);
    if (pins.empty()) words.fail("a pin from P21 to P28");
    words.end();
    leads_ |= all_of(pins);
}

void signal_set::add(std::string_view text)
{
    signal_words words{text};
    if (words.take("lead")) return add_lead(words);
    if (words.take("chip")) {
        chip_plan plan = read_chip(words, chips_);
        chip_plans_.push_back(std::move(plan));
        return;
    }
    const auto pins = pins_of(words, pins_ | leads_);
    if (pins.empty()) words.fail("a pin from P21 to P28, several as P21..P28, \"chip\" or \"lead\"");
    auto made = read_signal(pins, words);
    words.end();
    sources_.push_back(std::move(made));
    pins_ |= all_of(pins);
}

signal_walk signal_set::walk(std::vector<std::shared_ptr<const signal>> more) const
{
    more.insert(more.end(), sources_.begin(), sources_.end());
    return {std::move(more), chip_plans_};
}

}  // namespace tamrix::sim
