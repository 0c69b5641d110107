// What can harm the part or the programmer at a contact.
#include "sim/socket.h"

#include <algorithm>
#include <utility>

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
    if (own == contact_drive{} || dead(contact)) return;
    const auto tell = [&](const std::string& what) { now.insert(name_of(contact) + ": " + what); };
    const auto tell_pin = [&](const char* driver, bool of_programmer, const char* drives) {
        tell(std::string{driver} + " on a pin that " + (of_programmer ? "the programmer" : "the part") + drives);
    };
    const bool supply = own.millivolts > 0;

    if (own.ground && where.supply) tell("supply and ground at once");
    if (supply && (where.driver_low || where.part_low)) tell_pin("supply", where.driver_low, " drives low");
    if (own.ground && (where.driver_high || where.part_high)) tell_pin("ground", where.driver_high, " drives high");
    if (own.high && where.part_low) tell("the programmer drives high, the part low");
    if (own.low && where.part_high) tell("the programmer drives low, the part high");
    if (own.high && where.driver_low) tell("two drivers of the programmer fight");
    if (own.high && where.outside_low) tell("the programmer drives high, a signal low");
    if (own.low && where.outside_high) tell("the programmer drives low, a signal high");
    if (supply && where.outside_low) tell("supply on a pin that a signal drives low");
    if (own.ground && where.outside_high) tell("ground on a pin that a signal drives high");
    if (!supply || part_ == nullptr) return;
    const auto pin = wires_.pin_at(contact, part_->pins());
    const std::int32_t highest = pin ? part_->highest_millivolts(*pin) : own.millivolts;
    if (own.millivolts > highest) tell(std::to_string(own.millivolts) + " mV, made for " + std::to_string(highest));
}

void socket::look_for_hazards()
{
    if (std::exchange(looked_, true)) return;
    std::set<std::string> now;
    for (int contact = 0; contact < wires_.contacts(); ++contact) tell_hazards_of(contact, now);
    for (const std::string& one : now) {
        if (!standing_hazards_.contains(one)) log_.hazard(one);
    }
    standing_hazards_ = std::move(now);
}

}  // namespace tamrix::sim
