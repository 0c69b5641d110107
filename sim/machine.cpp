#include "sim/machine.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

/// A VPP generator at rest delivers this.
constexpr std::int32_t safe_vpp_millivolts = 5000;
constexpr int special_code = 108;

bool set_in(std::uint8_t byte, int bit) { return (byte >> bit & 1) != 0; }

}  // namespace

machine::machine(int model, const fault_set& faults, journal& log)
    : model_{model},
      wires_{model},
      log_{log},
      socket_{wires_, faults, log},
      supplies_(static_cast<std::size_t>(wires_.contacts()))
{
    reset();
}

void machine::reset()
{
    registers_.fill(0);
    std::fill_n(registers_.begin(), 2 * ports, std::uint8_t{255});
    std::ranges::fill(supplies_, supplies{});
    vcc_millivolts_ = 0;
    vpp_millivolts_ = {};
    update();
}

void machine::update()
{
    socket_.rewire();
    for (int port = 0; port < ports; ++port) apply_port(port);
    switch_supplies();
}

void machine::switch_supplies()
{
    apply_supplies();
    socket_.settle();
}

void machine::insert(std::unique_ptr<part> what)
{
    socket_.insert(std::move(what));
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

void machine::vcc(int code, bool on)
{
    if (supplies* const one = at_code(code)) one->vcc = on;
    switch_supplies();
}

void machine::vpp(int code, bool on)
{
    if (supplies* const one = at_code(code)) one->vpp = on;
    switch_supplies();
}

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

std::int32_t machine::vpp_millivolts(int code) const
{
    const std::int32_t generator = vpp_millivolts_[static_cast<std::size_t>(code % 2)];
    return special_supply(code) && generator <= safe_vpp_millivolts ? vcc_millivolts_ : generator;
}

/// The wiring of models 23, 24, 28 and 29 hands the special supply to contact 107 where the part has its supply pin
/// there.
int machine::fed_contact(int contact) const
{
    const part* const inside = socket_.occupant();
    if (!wires_.can_only_pull_low() || !special_supply(wires_.code_of_contact(contact)) || inside == nullptr ||
        inside->vcc_pin() < 0) {
        return contact;
    }
    const int wanted = wires_.contact_of_pin(inside->vcc_pin(), inside->pins());
    return wires_.code_of_contact(wanted) == special_code - 1 ? wanted : contact;
}

void machine::apply_supplies()
{
    for (int contact = 0; contact < wires_.contacts(); ++contact) {
        contact_drive& drive = socket_.at(contact);
        drive.ground = supplies_[static_cast<std::size_t>(contact)].ground;
        drive.millivolts = 0;
    }
    for (int contact = 0; contact < wires_.contacts(); ++contact) {
        const supplies& own = supplies_[static_cast<std::size_t>(contact)];
        const int code = wires_.code_of_contact(contact);
        if (own.vcc) {
            std::int32_t& here = socket_.at(contact).millivolts;
            here = std::max(here, vcc_millivolts_);
        }
        if (own.vpp) {
            std::int32_t& there = socket_.at(fed_contact(contact)).millivolts;
            there = std::max(there, vpp_millivolts(code));
        }
    }
}

void machine::apply_port(int port)
{
    const std::uint8_t data = registers_[static_cast<std::size_t>(2 * port)];
    // Where a port has one byte, a one releases.
    const std::uint8_t mask = wires_.can_only_pull_low() ? data : registers_[static_cast<std::size_t>(2 * port + 1)];
    for (int bit = 0; bit < 8; ++bit) {
        const auto contact = wires_.contact_of_bit(port, bit);
        if (!contact) continue;
        const level driven = set_in(data, bit) ? level::high : level::low;
        socket_.at(*contact).pin = set_in(mask, bit) ? level::open : driven;
    }
}

void machine::write_register(std::uint8_t address, std::uint8_t value)
{
    if (std::exchange(registers_[address], value) == value || address >= 2 * ports) return;
    apply_port(address / 2);
    socket_.settle();
}

void machine::write_ports(const port_bytes& data, const port_bytes& masks)
{
    for (int port = 0; port < ports; ++port) {
        const auto index = static_cast<std::size_t>(port);
        registers_[2 * index] = data[index];
        registers_[2 * index + 1] = masks[index];
        apply_port(port);
    }
    socket_.settle();
    settle_down();
}

std::uint8_t machine::port_levels(int port) const
{
    unsigned byte = 0;
    for (int bit = 0; bit < 8; ++bit) {
        const auto contact = wires_.contact_of_bit(port, bit);
        // A bit that is wired to nothing is pulled up like any other.
        if (!contact || socket_.is_high(*contact)) byte |= 1u << bit;
    }
    return static_cast<std::uint8_t>(byte);
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
        const supplies& own = supplies_[static_cast<std::size_t>(contact)];
        const std::string where = " driver left on at contact " + std::to_string(wires_.code_of_contact(contact));
        if (own.ground) log_.hazard("ground" + where);
        if (own.vcc) log_.hazard("VCC" + where);
        if (own.vpp) log_.hazard("VPP" + where);
    }
    for (std::size_t channel = 0; channel < 2; ++channel) {
        if (vpp_millivolts_[channel] > safe_vpp_millivolts)
            log_.hazard("VPP generator " + std::to_string(channel) + " left at " +
                        std::to_string(vpp_millivolts_[channel]) + " mV");
    }
}

}  // namespace tamrix::sim
