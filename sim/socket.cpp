#include "sim/socket.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace tamrix::sim {

namespace {

/// A sound part is stable after a few rounds; one that is not after so many oscillates.
constexpr int most_rounds = 256;

}  // namespace

socket::socket(const wiring& wires, const fault_set& faults, journal& log)
    : wires_{wires},
      faults_{faults},
      log_{log},
      drives_(static_cast<std::size_t>(wires.contacts())),
      outside_(drives_.size(), level::open),
      net_of_(drives_.size()),
      nets_(drives_.size()),
      levels_(drives_.size(), level::high)
{
    rewire();
}

void socket::insert(std::unique_ptr<part> what)
{
    if (what != nullptr && (what->pins() <= 0 || what->pins() % 2 != 0 || what->pins() > wires_.contacts())) {
        throw std::invalid_argument{"a part of " + std::to_string(what->pins()) + " pins does not fit a socket of " +
                                    std::to_string(wires_.contacts())};
    }
    part_ = std::move(what);
    powered_ = false;
    part_drives_.assign(part_ == nullptr ? 0 : static_cast<std::size_t>(part_->pins()), level::open);
    rewire();
}

const pin_fault* socket::fault_of(int pin) const
{
    if (faults_.pins.empty()) return nullptr;
    const auto found = faults_.pins.find(pin + 1);
    return found == faults_.pins.end() ? nullptr : &found->second;
}

bool socket::dead(int contact) const
{
    return !faults_.dead_drivers.empty() && faults_.dead_drivers.contains(wires_.code_of_contact(contact));
}

void socket::join(int contact, int other)
{
    const std::size_t one = net_of_[static_cast<std::size_t>(contact)], two = net_of_[static_cast<std::size_t>(other)];
    std::ranges::replace(net_of_, two, one);
}

/// A line that the part makes does not reach this pin of it.
bool socket::cut(int pin) const
{
    const pin_fault* const fault = fault_of(pin);
    const auto number = wires_.socket_pin_of(contact_of(pin));
    return faults_.no_test_board || (fault != nullptr && *fault == pin_fault::open) ||
           (number && faults_.open_board_lines.contains(*number));
}

void socket::rewire()
{
    std::iota(net_of_.begin(), net_of_.end(), std::size_t{0});
    for (const auto& [one, other] : faults_.bridges) {
        const auto here = wires_.contact_of_socket_pin(one), there = wires_.contact_of_socket_pin(other);
        if (here && there) join(*here, *there);
    }
    if (part_ == nullptr) return;
    for (const auto& [one, other] : part_->links()) {
        if (one < 0 || other < 0 || one >= part_->pins() || other >= part_->pins()) continue;
        if (!cut(one) && !cut(other)) join(contact_of(one), contact_of(other));
    }
}

bool socket::supplied(int pin) const
{
    const auto contact = contact_of(pin);
    const pin_fault* const fault = fault_of(pin);
    if (fault != nullptr && *fault != pin_fault::stuck_high) return false;
    return drives_[static_cast<std::size_t>(contact)].millivolts > 0 && !dead(contact);
}

bool socket::grounded(int pin) const
{
    const auto contact = contact_of(pin);
    const pin_fault* const fault = fault_of(pin);
    if (fault != nullptr && *fault != pin_fault::stuck_low) return false;
    return drives_[static_cast<std::size_t>(contact)].ground && !dead(contact);
}

void socket::update_power()
{
    const bool before = powered_;
    powered_ = part_ != nullptr && (part_->vcc_pin() < 0 || supplied(part_->vcc_pin())) &&
               (part_->gnd_pin() < 0 || grounded(part_->gnd_pin()));
    if (!powered_) std::ranges::fill(part_drives_, level::open);
    if (powered_ && !before) part_->power_up();
}

level socket::net::level_of() const
{
    if (ground) return level::low;
    if (supply) return level::high;
    if (driver_low || part_low || outside_low) return level::low;
    if (driver_high || part_high || outside_high) return level::high;
    if (stuck_low) return level::low;
    return pulled_down && !stuck_high ? level::low : level::high;
}

void socket::look_at_part(int pin, net& where) const
{
    if (const pin_fault* const fault = fault_of(pin)) {
        where.stuck_low = where.stuck_low || *fault == pin_fault::stuck_low;
        where.stuck_high = where.stuck_high || *fault == pin_fault::stuck_high;
        return;
    }
    const level drive = part_drives_[static_cast<std::size_t>(pin)];
    where.part_low = where.part_low || drive == level::low;
    where.part_high = where.part_high || drive == level::high;
}

void socket::resolve()
{
    std::ranges::fill(nets_, net{});
    for (int contact = 0; contact < wires_.contacts(); ++contact) {
        const auto index = static_cast<std::size_t>(contact);
        const contact_drive& drive = drives_[index];
        net& where = nets_[net_of_[index]];
        where.pulled_down = where.pulled_down || drive.pulled_down;
        where.outside_low = where.outside_low || outside_[index] == level::low;
        where.outside_high = where.outside_high || outside_[index] == level::high;
        if (dead(contact)) continue;
        where.ground = where.ground || drive.ground;
        where.supply = where.supply || drive.millivolts > 0;
        where.driver_low = where.driver_low || drive.low;
        where.driver_high = where.driver_high || drive.high;
    }
    for (int pin = 0; part_ != nullptr && pin < part_->pins(); ++pin) look_at_part(pin, nets_[net_of_pin(pin)]);
    std::ranges::transform(nets_, levels_.begin(), [](const net& one) { return one.level_of(); });
}

bool socket::would_be_high(int contact, level what) const
{
    net where = nets_[net_of_[static_cast<std::size_t>(contact)]];
    where.outside_low = what == level::low;
    where.outside_high = what == level::high;
    return where.level_of() == level::high;
}

std::vector<level> socket::seen_by_part() const
{
    std::vector<level> seen(part_drives_.size());
    for (std::size_t pin = 0; pin < seen.size(); ++pin) {
        seen[pin] = levels_[net_of_pin(static_cast<int>(pin))];
        if (const pin_fault* const fault = fault_of(static_cast<int>(pin)))
            seen[pin] = *fault == pin_fault::stuck_low ? level::low : level::high;
    }
    return seen;
}

void socket::settle()
{
    looked_ = false;
    update_power();
    resolve();
    if (!powered_) return;
    std::vector<level> drives(part_drives_.size(), level::open);
    for (int round = 0; round < most_rounds; ++round) {
        const std::vector<level> seen = seen_by_part();
        std::ranges::fill(drives, level::open);
        part_->settle(seen, drives);
        part_drives_ = drives;
        resolve();
        if (seen_by_part() != seen) continue;
        oscillates_ = false;
        return;
    }
    if (!std::exchange(oscillates_, true)) log_.note("the part oscillates");
}

}  // namespace tamrix::sim
