// The simulated programmer's socket as a host offers it: which chip is in it, and what is wrong with its pins.
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
    std::string same_as;  // the chip whose pins and function it has; empty where it has its own
    int vcc_pin = 0, gnd_pin = 0;
    std::vector<std::string> pin_names;  // pin 1 first

    int pins() const { return static_cast<int>(pin_names.size()); }
};

enum class pin_state { sound, open, stuck_at_0, stuck_at_1 };

class simulator {
public:
    /// Loads the simulator's library; an empty path stands for the one beside the program. `chips_folder` has the data
    /// of the chips. Throws std::runtime_error.
    simulator(const std::string& library_path, std::string chips_folder);
    simulator(const simulator&) = delete;
    simulator& operator=(const simulator&) = delete;

    /// The file to hand to tamrix_use_programmer.
    const std::string& library_path() const { return path_; }
    /// What is to be handed over with it: the socket as it is now.
    std::string options(int model) const;

    /// By name, digits before letters and short numbers first.
    const std::vector<simulated_chip>& chips() const { return chips_; }
    /// Null where there is none of that name.
    const simulated_chip* find(std::string_view name) const;

    /// What is in the socket; null where it is empty.
    const simulated_chip* chip() const { return find(chip_); }
    pin_state state_of(int pin) const;
    /// How many pins of the chip are not sound.
    std::size_t faults() const { return faults_.size(); }

    /// Puts another chip in, which is sound, or with an empty name none. All three change a programmer that is running
    /// as well; false where none is, so that it has to be made with options(). Throw std::runtime_error.
    bool insert(std::string_view name);
    bool set(int pin, pin_state state);
    bool mend();

    /// What could have harmed a real chip since the last call, each kind once with how often it came.
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
