// The socket of the simulated programmer for a host: the chip in it, and the faults of its pins.
#pragma once

#include "tamrix/simulator.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::host {

struct simulated_chip {
    std::string name, description;
    std::string same_as;  // the chip whose pins and function it has; empty if it has its own
    int vcc_pin = 0, gnd_pin = 0;
    std::vector<std::string> pin_names;  // pin 1 first

    int pins() const { return static_cast<int>(pin_names.size()); }
};

enum class pin_state { sound, open, stuck_at_0, stuck_at_1 };

class simulator {
public:
    /// Loads the simulator's library; an empty path means the one beside the program. `chips_folder` has the data of
    /// the chips. Throws std::runtime_error.
    simulator(const std::string& library_path, std::string chips_folder);
    simulator(const simulator&) = delete;
    simulator& operator=(const simulator&) = delete;

    /// The library for tamrix_use_programmer.
    const std::string& library_path() const { return path_; }
    /// The options for tamrix_use_programmer: the socket as it is now.
    std::string options(int model) const;

    /// By name, digits before letters and short numbers first.
    const std::vector<simulated_chip>& chips() const { return chips_; }
    /// Null if there is none of that name.
    const simulated_chip* find(std::string_view name) const;

    /// The chip in the socket; null if it is empty.
    const simulated_chip* chip() const { return find(chip_); }
    pin_state state_of(int pin) const;
    /// How many pins of the chip have a fault.
    std::size_t faults() const { return faults_.size(); }

    /// Inserts another chip, without faults; an empty name empties the socket. All three also change a running
    /// programmer; false if none is running, so that the next one needs options(). Throw std::runtime_error.
    bool insert(std::string_view name);
    bool set(int pin, pin_state state);
    bool mend();

    /// What could have harmed a real chip since the last call, each kind once, with its count.
    std::vector<std::string> take_hazards();

private:
    std::string socket_entries() const;
    bool bring_in();

    std::string path_, chips_folder_;
    decltype(&tamrix_simulator_change) change_;
    decltype(&tamrix_simulator_hazards) hazards_;
    decltype(&tamrix_simulator_chips) list_chips_;
    std::vector<simulated_chip> chips_;
    std::string chip_;  // empty: none
    std::map<int, pin_state> faults_;
};

}  // namespace tamrix::host
