#include "seen_faults.h"

#include <algorithm>
#include <ostream>

namespace tamrix::tests {

namespace {

/// Without the module.
std::string words_of(const single_fault& fault)
{
    using enum fault_kind;
    constexpr const char* drivers[] = {"vpp", "vpp", "vcc", "vcc", "ground", "ground", "high", "high", "low", "low"};
    const auto number = static_cast<std::size_t>(fault.kind);
    const std::string place = std::to_string(fault.at);
    if (number < std::size(drivers))
        return drivers[number] + (" driver " + place) + (number % 2 == 0 ? " dead" : " always on");
    switch (fault.kind) {
    case stuck_low: return "input " + place + " stuck 0";
    case stuck_high: return "input " + place + " stuck 1";
    case bridge: return "pins " + place + " and " + std::to_string(fault.at + 1) + " bridged";
    case pull_down_dead: return "pull-down " + place + " dead";
    case line_open: return "test board line " + place + " open";
    case bad_register: return "bad register " + place + " of board " + std::to_string(fault.board);
    default: return "bad ram bank " + place;
    }
}

}  // namespace

std::string single_fault::text() const
{
    using enum fault_kind;
    const std::string number = std::to_string(module);
    switch (kind) {
    case module_missing: return "module " + number + " missing";
    case board_missing: return "test board of module " + number + " missing";
    case fpga_idle_once: return "fpga " + number + " does not start once";
    case fpga_idle_twice: return "fpga " + number + " does not start twice";
    case fpga_idle: return "fpga " + number + " does not start";
    default: return words_of(*this) + (module == 0 ? "" : " of module " + number);
    }
}

std::ostream& operator<<(std::ostream& out, const finding& found)
{
    return out << name_of(found.stage) << " module " << found.module << " at " << found.at << " driven " << found.driven
               << " read " << found.read;
}

finding finding_of(const selftest_fault& found)
{
    switch (found.stage) {
    case selftest_stage::ram:
    case selftest_stage::fpga: return {.stage = found.stage, .module = found.slot, .at = found.place};
    case selftest_stage::registers:
        return {
            .stage = found.stage, .module = found.slot, .at = found.place, .driven = found.board, .read = found.read};
    default:
        return {.stage = found.stage,
                .module = found.slot,
                .at = found.pin,
                .driven = found.driven_pin,
                .read = found.read};
    }
}

bool has(std::span<const single_fault> faults, fault_kind kind, int module)
{
    return std::ranges::any_of(faults,
                               [&](const single_fault& one) { return one.kind == kind && one.module == module; });
}

bool tells(const finding& found, const single_fault& fault)
{
    if (found.module != fault.module) return false;
    if (fault.kind > fault_kind::bad_bank) return true;
    if ((found.stage == selftest_stage::ram) != (fault.kind == fault_kind::bad_bank)) return false;
    const bool is_register = fault.kind == fault_kind::bad_register;
    if ((found.stage == selftest_stage::registers) != is_register) return false;
    if (is_register) return found.at == fault.at && found.driven == fault.board;
    return found.at == fault.at || (fault.kind == fault_kind::bridge && found.at == fault.at + 1);
}

}  // namespace tamrix::tests
