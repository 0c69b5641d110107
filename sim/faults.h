// What can be wrong with a simulated programmer or the part in its socket.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix::sim {

class fault_error : public std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

enum class pin_fault { stuck_low, stuck_high, open };

/// What the programmer can switch to a contact: the supplies, and the two halves of the pin driver.
enum class driver_kind : std::uint8_t { vpp, vcc, ground, high, low };
inline constexpr std::size_t driver_kinds = 5;
enum class driver_fault : std::uint8_t { dead, always_on };

/// How many more times something goes wrong.
class fault_count {
public:
    static constexpr int always = std::numeric_limits<int>::max();
    explicit fault_count(int times = 0) : times_{times} {}
    /// True if it goes wrong this time.
    bool take()
    {
        if (times_ == 0) return false;
        if (times_ != always) --times_;
        return true;
    }

private:
    int times_;
};

struct fault_set {
    std::map<int, pin_fault> pins{};  // by pin of the part, from 1
    std::set<int> dead_drivers{};     // by pin code: nothing switches at this contact
    std::set<int> bad_banks{};        // of the memory, from 0
    fault_count lost_replies{}, reads_without_end{}, lost_markers{};
    bool no_answer = false;

    // Of recording, counter and generator.
    bool no_trigger = false, no_count = false, dead_generator = false;
    std::optional<std::uint8_t> wrong_reply{}, early_reply{};  // in place of, and before, the one at the end
    std::set<int> silent_banks{};                              // of the memory, from 0: reads of these never end

    // By pin of the socket, from 1.
    std::map<std::pair<driver_kind, int>, driver_fault> drivers{};
    std::map<int, bool> stuck_inputs{};  // the level that is read
    std::set<std::pair<int, int>> bridges{};
    std::set<int> dead_pull_downs{}, open_board_lines{};
    bool no_pull_down = false, no_test_board = false;
    std::set<std::pair<int, int>> bad_registers{};  // board and register

    // On a programmer with modules, by number from 1.
    std::set<int> missing_modules{};
    std::map<int, fault_count> idle_fpgas{};  // these do not start with their next images
    std::vector<fault_set> modules{};         // pins, drivers and memory of each; empty or one entry a module
};

/// Adds one fault by name: "pin 3 stuck 0", "pin 3 stuck 1", "pin 3 open", "dead driver 5", "vcc driver 7 dead", "vcc
/// driver 7 always on" (also vpp, ground, high, low), "input 7 stuck 0", "input 7 stuck 1", "pins 7 and 8 bridged",
/// "pull-down dead", "pull-down 7 dead", "test board missing", "test board line 7 open", "bad register 3 of board 5",
/// "lost reply" and "lost reply 2", "read never ends" and "read never ends 2", "marker never comes" and "marker never
/// comes 2" (all with a count: only the next so many), "no answer", "bad ram bank 3", "bank 3 never comes", "no
/// trigger", "wrong reply 85", "early reply 85", "no signal at the counter", "generator dead". "pin 3" is the part's
/// pin, all other pins are those of the socket. Any fault of a pin, a driver, a board or the memory applies to a module
/// with "of module 2" at the end. Other faults of modules: "module 3 missing", "test board of module 2 missing", "fpga
/// 2 does not start" and "fpga 2 does not start 2" (or "once" or "twice"). Throws fault_error that says what was found
/// and what is possible there.
void add_fault(fault_set& faults, std::string_view text);

}  // namespace tamrix::sim
