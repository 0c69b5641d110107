// What can be wrong with a simulated programmer or the part in its socket.
#pragma once

#include <limits>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tamrix::sim {

class fault_error : public std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

enum class pin_fault { stuck_low, stuck_high, open };

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
};

/// Adds one fault by name: "pin 3 stuck 0", "pin 3 stuck 1", "pin 3 open", "dead driver 5", "lost reply" and "lost
/// reply 2", "read never ends" and "read never ends 2", "marker never comes" and "marker never comes 2" (all with a
/// count: only the next so many), "no answer", "bad ram bank 3". Throws fault_error that says what was found and what
/// is possible there.
void add_fault(fault_set& faults, std::string_view text);

}  // namespace tamrix::sim
