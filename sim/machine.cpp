#include "sim/machine.h"

#include "sim/driver_lists.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

/// A VPP generator at rest delivers this.
constexpr std::int32_t safe_vpp_millivolts = 5000;
constexpr std::uint8_t function_switch = 11;
constexpr std::uint8_t pull_register = 50;
/// A part of so many pins has its last one at contact 107.
constexpr int pins_up_to_contact_107 = 14;
/// The VCC output of programmers that have an in-system connector.
constexpr int connector_code = 104;

}  // namespace

machine::machine(int model, int generation, const fault_set& faults, journal& log)
    : model_{model},
      generation_{generation},
      wires_{model},
      faults_{faults},
      log_{log},
      socket_{wires_, faults, log},
      board_{faults},
      defects_(static_cast<std::size_t>(wires_.contacts())),
      supplies_(defects_.size()),
      tested_(defects_.size())
{
    look_up_defects();
    reset();
}

void machine::reset()
{
    registers_.fill(0);
    std::fill_n(registers_.begin(), 2 * ports, std::uint8_t{255});
    std::ranges::fill(supplies_, supplies{});
    std::ranges::fill(tested_, supplies{});
    board_.reset();
    masks_count_ = false;
    connector_vcc_ = false;
    vcc_millivolts_ = 0;
    vpp_millivolts_ = {};
    switch_supplies();
}

void machine::update()
{
    look_up_defects();
    socket_.rewire();
    switch_supplies();
}

void machine::switch_supplies()
{
    apply_ports();
    apply_supplies();
    socket_.settle();
}

void machine::insert(std::unique_ptr<part> what)
{
    // With a part of this package, these models ask for a line between the contacts 107 and 108.
    const bool laid = what != nullptr && what->pins() == pins_up_to_contact_107 && wires_.can_only_pull_low();
    socket_.insert(std::move(what));
    line_laid_ = laid;
    update();
}

machine::supplies* machine::at_code(int code)
{
    const auto contact = wires_.contact_of_code(code);
    return contact ? &supplies_[static_cast<std::size_t>(*contact)] : nullptr;
}

void machine::set_vcc(std::int32_t millivolts)
{
    vcc_millivolts_ = std::max(millivolts, 0);
    switch_supplies();
}

void machine::set_vpp(std::int32_t millivolts, int channel)
{
    if (channel != 0 && channel != 1) return log_.note("there is no VPP generator " + std::to_string(channel));
    vpp_millivolts_[static_cast<std::size_t>(channel)] = std::max(millivolts, 0);
    switch_supplies();
}

// The routines also switch at code 0, which is nowhere.
void machine::ground(int code, bool on)
{
    if (supplies* const one = at_code(code)) one->ground = on;
    switch_supplies();
}

/// These models have a connector in place of a socket.
bool machine::is_connector(int code) const
{
    return code == connector_code && (model_ == 11 || model_ == 12 || model_ == 25 || model_ == 26);
}

void machine::vcc(int code, bool on)
{
    if (is_connector(code)) {
        connector_vcc_ = on;
        return;
    }
    if (supplies* const one = at_code(code)) one->vcc = on;
    switch_supplies();
}

void machine::vpp(int code, bool on)
{
    if (supplies* const one = at_code(code)) one->vpp = on;
    switch_supplies();
}

void machine::select_board(int code)
{
    board_.select(code);
    switch_supplies();
}

void machine::select_board(int first, int second)
{
    board_.select(first, second);
    switch_supplies();
}

void machine::set_bus_mode(std::int32_t mode)
{
    board_.set_mode(mode);
    switch_supplies();
}

void machine::toggle_driver(driver_kind kind, int pin)
{
    if (!has_test_switch(model_, kind, pin))
        return log_.note("model " + std::to_string(model_) + " switches no such driver at pin " + std::to_string(pin));
    supplies& one = tested_[static_cast<std::size_t>(*wires_.contact_of_socket_pin(pin))];
    bool& on = kind == driver_kind::ground ? one.ground : kind == driver_kind::vcc ? one.vcc : one.vpp;
    on = !on;
    switch_supplies();
}

void machine::write_register(std::uint8_t address, std::uint8_t value)
{
    if (address == function_switch) board_.take_switch(value);
    if (std::exchange(registers_[address], value) == value) return;
    if (address == pull_register) return switch_supplies();
    if (address >= 2 * ports) return;
    apply_port(address / 2);
    socket_.settle();
}

void machine::write_ports(const port_bytes& data, const port_bytes& masks, bool masks_count)
{
    masks_count_ = masks_count;
    board_.take_switch(masks[function_switch / 2]);
    for (int port = 0; port < ports; ++port) {
        const auto index = static_cast<std::size_t>(port);
        registers_[2 * index] = data[index];
        registers_[2 * index + 1] = masks[index];
    }
    apply_ports();
    socket_.settle();
    settle_down();
}

std::uint8_t machine::read_register(std::uint8_t address)
{
    if (address >= 2 * ports || address % 2 != 0) return registers_[address];
    settle_down();
    return port_levels(address / 2);
}

machine::port_bytes machine::read_ports() const
{
    port_bytes levels{};
    for (int port = 0; port < ports; ++port) levels[static_cast<std::size_t>(port)] = port_levels(port);
    return levels;
}

void machine::check_idle()
{
    for (int contact = 0; contact < wires_.contacts(); ++contact) {
        const supplies &own = supplies_[static_cast<std::size_t>(contact)],
                       &tested = tested_[static_cast<std::size_t>(contact)];
        const std::string where = " driver left on at contact " + std::to_string(wires_.code_of_contact(contact));
        if (own.ground || tested.ground) log_.hazard("ground" + where);
        if (own.vcc || tested.vcc) log_.hazard("VCC" + where);
        if (own.vpp || tested.vpp) log_.hazard("VPP" + where);
    }
    if (connector_vcc_) log_.hazard("VCC driver left on at the connector");
    for (std::size_t channel = 0; channel < 2; ++channel) {
        if (vpp_millivolts_[channel] > safe_vpp_millivolts)
            log_.hazard("VPP generator " + std::to_string(channel) + " left at " +
                        std::to_string(vpp_millivolts_[channel]) + " mV");
    }
}

}  // namespace tamrix::sim
