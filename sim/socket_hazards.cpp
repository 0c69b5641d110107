// What can harm the part or the programmer at a contact.
#include "sim/socket.h"

#include <algorithm>

namespace tamrix::sim {

std::string socket::name_of(int contact) const
{
    const std::string code = "contact " + std::to_string(wires_.code_of_contact(contact));
    if (part_ == nullptr) return code;
    const auto pin = wires_.pin_at(contact, part_->pins());
    return pin ? "pin " + std::to_string(*pin + 1) + " (" + code + ")" : code;
}

void socket::tell_hazards_of(int contact, std::set<std::string>& now) const
{
    const auto index = static_cast<std::size_t>(contact);
    const contact_drive& own = drives_[index];
    const net& where = nets_[net_of_[index]];
    const bool on = !dead(contact);
    const bool supply_here = own.millivolts > 0 && on;
    const std::string name = name_of(contact);

    if (own.ground && on && where.supply) now.insert(name + ": supply and ground at once");
    if (supply_here && (where.driver_low || where.part_low))
        now.insert(name + ": supply on a pin that " + (where.driver_low ? "the programmer" : "the part") +
                   " drives low");
    if (own.ground && on && (where.driver_high || where.part_high))
        now.insert(name + ": ground on a pin that " + (where.driver_high ? "the programmer" : "the part") +
                   " drives high");
    if (own.pin == level::high && on && where.part_low) now.insert(name + ": the programmer drives high, the part low");
    if (own.pin == level::low && on && where.part_high) now.insert(name + ": the programmer drives low, the part high");
    if (own.pin == level::high && on && where.driver_low) now.insert(name + ": two drivers of the programmer fight");
    if (!supply_here || part_ == nullptr) return;
    const auto pin = wires_.pin_at(contact, part_->pins());
    if (pin && own.millivolts > part_->highest_millivolts(*pin))
        now.insert(name + ": " + std::to_string(own.millivolts) + " mV, made for " +
                   std::to_string(part_->highest_millivolts(*pin)));
}

void socket::look_for_hazards()
{
    std::set<std::string> now;
    for (int contact = 0; contact < wires_.contacts(); ++contact) tell_hazards_of(contact, now);
    for (const std::string& one : now) {
        if (!standing_hazards_.contains(one)) log_.hazard(one);
    }
    standing_hazards_ = std::move(now);
}

}  // namespace tamrix::sim
