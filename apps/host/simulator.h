// The simulated programmer for a host: what is in its socket, the faults of a chip's pins and its own, and the signals
// at its instruments' pins.
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

    /// The name of the test board, which no chip has.
    static constexpr std::string_view test_board = "test board";
    /// The name of what is in the socket; empty if it is empty.
    const std::string& in_socket() const { return in_socket_; }
    /// The chip in the socket; null if there is none.
    const simulated_chip* chip() const { return find(in_socket_); }
    pin_state state_of(int pin) const;
    /// How many pins of the chip have a fault.
    std::size_t faults() const { return faults_.size(); }

    /// What is broken beside the pins of a chip, as docs/simulator.md names it, in the order in which it was added. It
    /// stays when another chip is inserted.
    const std::vector<std::string>& more_faults() const { return more_faults_; }

    /// Inserts another chip, without bad pins, or the test board; an empty name empties the socket. All of these also
    /// change a running programmer; false if none is running, so that the next one needs options(). Throw
    /// std::runtime_error.
    bool insert(std::string_view name);
    bool set(int pin, pin_state state);
    bool mend();
    /// Adds one fault, or several with ";" between; all of them or, if one is wrong, none.
    bool add_faults(std::string_view texts);
    /// Removes the fault at `index` of more_faults(); nothing if there is none.
    bool remove_fault(std::size_t index);
    bool remove_faults();

    /// What is at P21 to P28, as docs/simulator.md words it, in the order in which it was added.
    const std::vector<std::string>& signals() const { return signals_; }
    /// The pins to which a lead from the generator goes, such as "P21 P23"; empty if there is none.
    const std::string& lead() const { return lead_; }
    /// Add, change, remove and lay: all of it or, if one is wrong or a pin would have two signals, none. Like insert()
    /// they also change a running programmer.
    /// Adds one signal, or several with ";" between.
    bool add_signals(std::string_view texts);
    /// Puts `text` in the place of the signal at `index` of signals(); nothing if there is none.
    bool change_signal(std::size_t index, std::string_view text);
    bool remove_signal(std::size_t index);
    /// An empty text takes the lead away.
    bool set_lead(std::string_view pins);

    /// What could have harmed a real chip since the last call, each kind once, with its count.
    std::vector<std::string> take_hazards();

private:
    std::string socket_entries() const;
    std::string signal_entries() const;
    bool bring_in(const std::string& entries);
    bool bring_in_signals(std::vector<std::string> signals, std::string lead);

    std::string path_, chips_folder_;
    decltype(&tamrix_simulator_change) change_;
    decltype(&tamrix_simulator_hazards) hazards_;
    decltype(&tamrix_simulator_chips) list_chips_;
    std::vector<simulated_chip> chips_;
    std::string in_socket_;
    std::map<int, pin_state> faults_;  // of the chip's pins
    std::vector<std::string> more_faults_;
    std::vector<std::string> signals_;
    std::string lead_;
};

}  // namespace tamrix::host
