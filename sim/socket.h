// The socket: the level of each contact from the programmer's drivers, the part and the pull-ups.
#pragma once

#include "sim/faults.h"
#include "sim/journal.h"
#include "sim/part.h"
#include "sim/wiring.h"

#include <memory>
#include <set>
#include <vector>

namespace tamrix::sim {

/// What the programmer does at a contact.
struct contact_drive {
    bool low = false, high = false;  // the two halves of the pin driver
    bool ground = false;             // the ground driver
    std::int32_t millivolts = 0;     // of the supply switched to it; 0: none
    bool pulled_down = false;        // else pulled up
    bool operator==(const contact_drive&) const = default;
};

/// Who wins: ground, then supply, then a low of pin driver, part or outside, then their high, then a stuck pin, then
/// the pull. A stuck pin is stuck on the part's side: the part sees the constant, and the contact shows it if nothing
/// drives it. At an open pin the part sees high, as an open input does, and the contact shows nothing of the part.
class socket {
public:
    socket(const wiring& wires, const fault_set& faults, journal& log);

    /// Replaces the part; null empties the socket. Takes effect at the next settle(). Throws std::invalid_argument if
    /// the part does not fit.
    void insert(std::unique_ptr<part> what);

    /// Takes effect at the next settle().
    contact_drive& at(int contact) { return drives_[static_cast<std::size_t>(contact)]; }
    /// What comes to a contact from outside, beside programmer and part. Takes effect at the next settle().
    void set_outside(int contact, level what) { outside_[static_cast<std::size_t>(contact)] = what; }
    /// The level that the contact would have if all that comes from outside to its node were `what`. The part keeps
    /// what it drives.
    bool would_be_high(int contact, level what) const;
    bool joined(int one, int other) const
    {
        return net_of_[static_cast<std::size_t>(one)] == net_of_[static_cast<std::size_t>(other)];
    }
    /// Call this after a fault was added or removed: it recomputes what part and bridges join. Takes effect at the next
    /// settle().
    void rewire();
    /// Lets all levels become stable; a part with supply works.
    void settle();
    /// The level that the programmer's input sees at a contact.
    bool is_high(int contact) const { return levels_[net_of_[static_cast<std::size_t>(contact)]] == level::high; }
    bool part_has_power() const { return powered_; }

    /// Called when time passes: a conflict that exists now is more than momentary. Each conflict is reported once,
    /// until it ends.
    void look_for_hazards();

private:
    struct net {
        bool ground = false, supply = false, driver_low = false, driver_high = false;
        bool part_low = false, part_high = false, stuck_low = false, stuck_high = false, pulled_down = false;
        bool outside_low = false, outside_high = false;
        level level_of() const;
    };
    const pin_fault* fault_of(int pin) const;
    int contact_of(int pin) const { return wires_.contact_of_pin(pin, part_->pins()); }
    std::size_t net_of_pin(int pin) const { return net_of_[static_cast<std::size_t>(contact_of(pin))]; }
    void join(int contact, int other);
    bool cut(int pin) const;
    bool dead(int contact) const;
    void update_power();
    bool supplied(int pin) const;
    bool grounded(int pin) const;
    void resolve();
    void look_at_part(int pin, net& where) const;
    std::vector<level> seen_by_part() const;
    std::string name_of(int contact) const;
    void tell_hazards_of(int contact, std::set<std::string>& now) const;

    const wiring& wires_;
    const fault_set& faults_;
    journal& log_;
    std::unique_ptr<part> part_;
    bool powered_ = false;
    bool oscillates_ = false;
    bool looked_ = false;  // for hazards, since the last change
    std::vector<contact_drive> drives_;
    std::vector<level> outside_;       // by contact
    std::vector<std::size_t> net_of_;  // by contact
    std::vector<net> nets_;
    std::vector<level> levels_;       // by net
    std::vector<level> part_drives_;  // by pin
    std::set<std::string> standing_hazards_;
};

}  // namespace tamrix::sim
