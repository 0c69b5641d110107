// What the state of the programmer and its faults do at each contact, and what its inputs read there.
#include "sim/machine.h"

#include <algorithm>

namespace tamrix::sim {

namespace {

/// A VPP generator at rest delivers this, and so do the rails of a driver test whose generators are off.
constexpr std::int32_t resting_millivolts = 5000;
constexpr int special_code = 108;
constexpr std::size_t pull_register = 50;
constexpr int outermost_port = 5;
constexpr int first_model_that_reaches_all = 40, generation_that_reaches_all = 17;

bool set_in(std::uint8_t byte, int bit) { return (byte >> bit & 1) != 0; }

}  // namespace

/// On these models the VPP driver of the contact replaces its VCC driver.
bool machine::special_supply(int code) const
{
    switch (model_) {
    case 15:
    case 16:
    case 23:
    case 24:
    case 28:
    case 29: return code == special_code;
    default: return false;
    }
}

std::int32_t machine::rail(std::int32_t generator) const
{
    return generator == 0 && board_.has_driver_test() ? resting_millivolts : generator;
}

std::int32_t machine::vpp_millivolts(int code) const
{
    const std::int32_t generator = vpp_millivolts_[static_cast<std::size_t>(code % 2)];
    return rail(special_supply(code) && generator <= resting_millivolts ? vcc_millivolts_ : generator);
}

void machine::look_up_defects()
{
    for (int contact = 0; contact < wires_.contacts(); ++contact) {
        defects found{.dead_pull_down = faults_.no_pull_down};
        if (const auto pin = wires_.socket_pin_of(contact)) {
            for (std::size_t kind = 0; kind < driver_kinds; ++kind) {
                const auto driver = faults_.drivers.find({static_cast<driver_kind>(kind), *pin});
                if (driver != faults_.drivers.end()) found.drivers[kind] = driver->second;
            }
            const auto stuck = faults_.stuck_inputs.find(*pin);
            if (stuck != faults_.stuck_inputs.end()) found.stuck_input = stuck->second;
            if (faults_.dead_pull_downs.contains(*pin)) found.dead_pull_down = true;
        }
        defects_[static_cast<std::size_t>(contact)] = found;
    }
}

/// Whether a driver is on that should be on or off: a defective one does not care.
bool machine::works(driver_kind kind, int contact, bool wanted) const
{
    const auto& fault = defects_[static_cast<std::size_t>(contact)].drivers[static_cast<std::size_t>(kind)];
    return fault ? *fault == driver_fault::always_on : wanted;
}

bool machine::pulls_down(int contact) const
{
    return board_.has_input_test() && registers_[pull_register] != 0 &&
           !defects_[static_cast<std::size_t>(contact)].dead_pull_down;
}

/// Cut off from its pins by the selected board.
bool machine::is_closed(int port) const
{
    return port == outermost_port && model_ < first_model_that_reaches_all &&
           generation_ != generation_that_reaches_all && board_.selected() && !board_.has_input_test();
}

/// The special supply of a socket of 40 takes its contact over from the pin driver.
bool machine::owned_by_supply(int contact) const
{
    return wires_.can_only_pull_low() && special_supply(wires_.code_of_contact(contact)) &&
           supplies_[static_cast<std::size_t>(contact)].vpp;
}

void machine::supply(int contact, std::int32_t millivolts)
{
    std::int32_t& here = socket_.at(contact).millivolts;
    here = std::max(here, millivolts);
}

void machine::apply_supplies()
{
    for (int contact = 0; contact < wires_.contacts(); ++contact) {
        const auto index = static_cast<std::size_t>(contact);
        contact_drive& drive = socket_.at(contact);
        drive.ground = works(driver_kind::ground, contact, supplies_[index].ground || tested_[index].ground);
        drive.millivolts = 0;
        drive.pulled_down = pulls_down(contact);
    }
    for (int contact = 0; contact < wires_.contacts(); ++contact) {
        const supplies &own = supplies_[static_cast<std::size_t>(contact)],
                       &tested = tested_[static_cast<std::size_t>(contact)];
        const int code = wires_.code_of_contact(contact);
        if (works(driver_kind::vcc, contact, own.vcc || tested.vcc)) supply(contact, rail(vcc_millivolts_));
        if (!works(driver_kind::vpp, contact, own.vpp || tested.vpp)) continue;
        supply(contact, vpp_millivolts(code));
        if (line_laid_ && special_supply(code)) supply(*wires_.contact_of_code(code - 1), vpp_millivolts(code));
    }
}

void machine::apply_port(int port)
{
    const std::uint8_t data = registers_[static_cast<std::size_t>(2 * port)];
    std::uint8_t released = registers_[static_cast<std::size_t>(2 * port + 1)];
    // A port that can only pull low releases with a one of its data byte.
    if (wires_.can_only_pull_low()) released = static_cast<std::uint8_t>(masks_count_ ? data | released : data);
    if (board_.reads_back() || is_closed(port)) released = 255;
    for (int bit = 0; bit < 8; ++bit) {
        const auto contact = wires_.contact_of_bit(port, bit);
        if (!contact) continue;
        const bool drives = !set_in(released, bit) && !owned_by_supply(*contact);
        socket_.at(*contact).low = works(driver_kind::low, *contact, drives && !set_in(data, bit));
        socket_.at(*contact).high = works(driver_kind::high, *contact, drives && set_in(data, bit));
    }
}

void machine::apply_ports()
{
    for (int port = 0; port < ports; ++port) apply_port(port);
}

/// The levels at the pins of a port, as its inputs show them.
template <class level_of>
std::uint8_t machine::read_pins(int port, level_of&& is_high) const
{
    unsigned byte = 0;
    for (int bit = 0; bit < 8; ++bit) {
        const auto contact = wires_.contact_of_bit(port, bit);
        // A bit that reaches no pin reads what was written to it.
        bool high = set_in(registers_[static_cast<std::size_t>(2 * port)], bit);
        if (contact && !is_closed(port))
            high = defects_[static_cast<std::size_t>(*contact)].stuck_input.value_or(is_high(*contact));
        if (high) byte |= 1u << bit;
    }
    return static_cast<std::uint8_t>(byte);
}

template <class level_of>
std::uint8_t machine::read_port(int port, level_of&& is_high) const
{
    const std::uint8_t levels = board_.reads_back()
                                    ? board_.read_back(port, registers_[static_cast<std::size_t>(2 * port)])
                                    : read_pins(port, is_high);
    return levels ^ board_.wrong_bits(port);
}

std::uint8_t machine::port_levels(int port) const
{
    return read_port(port, [this](int contact) { return socket_.is_high(contact); });
}

void machine::set_outside(pin_levels levels)
{
    if (levels == outside_) return;
    outside_ = levels;
    for (int bit = 0; bit < 8; ++bit) {
        const auto contact = wires_.contact_of_bit(0, bit);
        const level driven = set_in(levels.high, bit) ? level::high : level::low;
        if (contact) socket_.set_outside(*contact, set_in(levels.driven, bit) ? driven : level::open);
    }
    socket_.settle();
}

input_view machine::view_of_inputs() const
{
    input_view view;
    const auto read = [this](level outside) {
        return read_port(0, [&](int contact) { return socket_.would_be_high(contact, outside); });
    };
    view.open = read(level::open);
    view.low = read(level::low);
    view.high = read(level::high);
    for (int bit = 0; bit < 8; ++bit) {
        unsigned joined = 1u << bit;
        for (int other = 0; other < 8; ++other) {
            const auto here = wires_.contact_of_bit(0, bit), there = wires_.contact_of_bit(0, other);
            if (here && there && socket_.joined(*here, *there)) joined |= 1u << other;
        }
        view.any_joined = view.any_joined || joined != 1u << bit;
        view.joined[static_cast<std::size_t>(bit)] = static_cast<std::uint8_t>(joined);
    }
    return view;
}

}  // namespace tamrix::sim
