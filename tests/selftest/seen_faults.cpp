#include "seen_faults.h"

#include <algorithm>
#include <array>
#include <set>

namespace tamrix::tests {

namespace {

constexpr int pins = 48;

/// What one model takes part in.
struct model_facts {
    std::vector<int> vpp{}, vcc{};
    int last_board_usb = -1, last_board_registers = -1;  // -1: no register test
    bool boards_3_and_4 = true;
};

std::vector<int> all_pins()
{
    std::vector<int> all;
    for (int pin = 1; pin <= pins; ++pin) all.push_back(pin);
    return all;
}
const std::vector<int> some_vpp{4, 8, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 23, 31, 32, 33, 34, 37, 38};
const std::vector<int> some_vcc{11, 13, 15, 16, 17, 20, 24, 25, 26, 27, 28, 29, 30, 33, 34, 35, 36, 37, 39, 43, 45};

model_facts facts_of(int model)
{
    switch (model) {
    case 1: return {.last_board_usb = 14, .last_board_registers = 14, .boards_3_and_4 = false};
    case 2: return {.last_board_usb = 16, .last_board_registers = 14, .boards_3_and_4 = false};
    case 9: return {.vpp = all_pins(), .vcc = all_pins(), .last_board_usb = 16, .last_board_registers = 16};
    case 15: return {.vpp = some_vpp, .vcc = some_vcc, .last_board_usb = 7, .last_board_registers = 7};
    case 57: return {.vcc = some_vcc};
    default: return {.vpp = all_pins(), .vcc = all_pins()};
    }
}

/// Port and bit where a pin is read: four pins of each column a port, from the socket's bottom.
int port_of(int pin) { return pin <= 24 ? (24 - pin) / 4 : (pin - 25) / 4; }
int bit_of(int pin) { return pin <= 24 ? (pin - 1) % 4 : 4 + (pin - 25) % 4; }

/// The faults by kind and pin, the pins that are connected by each, and those that can read otherwise than on a sound
/// programmer.
struct fault_table {
    explicit fault_table(std::span<const single_fault> faults, bool board)
    {
        for (const single_fault& one : faults) {
            if (one.kind == fault_kind::bad_register) bad_registers.emplace(one.board, one.at);
            if (one.kind < fault_kind::bad_register) at[static_cast<std::size_t>(one.kind)][place(one.at)] = true;
        }
        for (int pin = 1; pin <= pins; ++pin) nets[place(pin)] = net_of(pin, board);
        for (int pin = 1; pin <= pins; ++pin)
            if (std::ranges::any_of(nets[place(pin)], [&](int one) { return is_touched(one); })) touched.push_back(pin);
    }
    static std::size_t place(int pin) { return static_cast<std::size_t>(pin); }
    bool is(fault_kind kind, int pin) const { return at[static_cast<std::size_t>(kind)][place(pin)]; }

    std::array<std::array<bool, pins + 1>, static_cast<std::size_t>(fault_kind::bad_register)> at{};
    std::array<std::vector<int>, pins + 1> nets{};
    std::vector<int> touched{};
    std::set<std::pair<int, int>> bad_registers{};

private:
    std::vector<int> net_of(int pin, bool board) const
    {
        std::vector<int> net{pin};
        const auto add = [&](int other) {
            if (std::ranges::count(net, other) == 0) net.push_back(other);
        };
        for (std::size_t i = 0; i < net.size(); ++i) {
            const int one = net[i], partner = pins + 1 - one;
            if (board && !is(fault_kind::line_open, one) && !is(fault_kind::line_open, partner)) add(partner);
            if (is(fault_kind::bridge, one)) add(one + 1);
            if (is(fault_kind::bridge, one - 1)) add(one - 1);
        }
        return net;
    }
    bool is_touched(int pin) const
    {
        if (is(fault_kind::bridge, pin - 1) || is(fault_kind::line_open, pins + 1 - pin)) return true;
        return std::ranges::any_of(at, [&](const auto& of_kind) { return of_kind[place(pin)]; });
    }
};

/// What is connected to the pins at the moment.
struct electronics {
    const fault_table& faults;
    bool rails_up = false;  // of VPP and VCC drivers that nobody set
    bool vcc_up = false;
    bool pulled_down = false;
    std::set<int> closed{};              // pins that no port reaches
    std::array<int, pins + 1> driven{};  // by ports: 0 none, 1 low, 2 high
    int vpp_pin = 0, vcc_pin = 0;

    bool driver(bool wanted, int pin, fault_kind dead, fault_kind on) const
    {
        return faults.is(on, pin) || (wanted && !faults.is(dead, pin));
    }
    /// Ground wins, then a supply, then a port that drives low, one that drives high, and the pull.
    bool high(int pin) const
    {
        using enum fault_kind;
        bool ground = false, supply = false, low = false, drives_high = false, down = false;
        for (const int one : faults.nets[fault_table::place(pin)]) {
            const int port = closed.contains(one) ? 0 : driven[fault_table::place(one)];
            ground = ground || faults.is(ground_on, one);
            supply = supply || (rails_up && driver(vpp_pin == one, one, vpp_dead, vpp_on)) ||
                     ((rails_up || vcc_up) && driver(vcc_pin == one, one, vcc_dead, vcc_on));
            low = low || driver(port == 1, one, low_dead, low_on);
            drives_high = drives_high || driver(port == 2, one, high_dead, high_on);
            down = down || (pulled_down && !faults.is(pull_down_dead, one));
        }
        if (ground) return false;
        if (supply) return true;
        if (low) return false;
        return drives_high || !down;
    }
    bool read(int pin) const
    {
        if (faults.is(fault_kind::stuck_low, pin)) return false;
        return faults.is(fault_kind::stuck_high, pin) || high(pin);
    }
};

finding pin_finding(const char* stage, int pin, int driven, bool level)
{
    return std::string{stage} + " pin " + std::to_string(pin) + " driven " + std::to_string(driven) +
           (level ? " high" : " low");
}

bool reads_outermost(const situation& where) { return where.generation == 17; }
bool is_outermost(int pin) { return port_of(pin) == 5; }

void see_inputs(const situation& where, const electronics& state, bool level, std::vector<finding>& seen)
{
    for (const int pin : state.faults.touched) {
        if ((is_outermost(pin) && !reads_outermost(where)) || state.read(pin) == level) continue;
        seen.push_back(pin_finding("input", pin, 0, !level));
    }
}

void see_drivers(const situation& where, electronics state, bool vpp, const std::vector<int>& list,
                 std::vector<finding>& seen)
{
    for (const int driven : list) {
        (vpp ? state.vpp_pin : state.vcc_pin) = driven;
        for (const int pin : state.faults.touched) {
            if ((is_outermost(pin) && !reads_outermost(where)) || state.read(pin) == (pin == driven)) continue;
            seen.push_back(pin_finding(vpp ? "VPP driver" : "VCC driver", pin, driven, state.read(pin)));
        }
    }
}

constexpr int registers_of_board[] = {4, 0, 4, 2, 0, 0, 2, 5, 5, 3, 2, 2, 2, 2, 0, 5, 0};

/// With zeros written the registers show the pins of their ports, all driven low.
void see_registers(const situation& where, const fault_table& faults, std::vector<finding>& seen)
{
    const model_facts facts = facts_of(where.model);
    const int last = where.usb ? facts.last_board_usb : facts.last_board_registers;
    for (int board = 0; board <= last; ++board) {
        if (board == 7 && where.generation == 17) continue;
        if ((board == 3 || board == 4) && !facts.boards_3_and_4) continue;
        const int count = registers_of_board[board];
        electronics state{.faults = faults, .rails_up = board == 3 || board == 7};
        for (int pin = 1; pin <= pins; ++pin) {
            state.driven[static_cast<std::size_t>(pin)] =
                where.usb || (port_of(pin) >= 1 && port_of(pin) <= count) ? 1 : 0;
            if (port_of(pin) == 5 && where.generation != 17 && board != 7) state.closed.insert(pin);
        }
        for (int reg = 1; reg <= count; ++reg) {
            int byte = 0;
            for (const int pin : faults.touched)
                if (port_of(pin) == reg && !state.closed.contains(pin) && state.read(pin)) byte |= 1 << bit_of(pin);
            if (faults.bad_registers.contains({board, reg})) byte ^= 1;
            if (byte == 0) continue;
            seen.push_back("register " + std::to_string(reg) + " board " + std::to_string(board) + " " +
                           std::to_string(byte));
            break;
        }
    }
}

struct sweep_facts {
    int first, limit;
    bool level, right;
};
constexpr sweep_facts below_40[] = {{4, 24, true, false}, {4, 24, false, false}, {4, 24, false, true},
                                    {4, 24, true, true},  {0, 4, false, false},  {0, 4, true, false},
                                    {0, 4, false, true},  {0, 4, true, true}};
constexpr sweep_facts from_40[] = {
    {0, 24, true, false}, {0, 24, false, false}, {0, 24, false, true}, {0, 24, true, true}};

void see_sweep(electronics state, const sweep_facts& sweep, std::vector<finding>& seen)
{
    std::set<int> asked;
    for (int line = sweep.first; line < sweep.limit; ++line) {
        const int driven = sweep.right ? pins - line : line + 1;
        for (int pin = 1; pin <= pins; ++pin)
            state.driven[static_cast<std::size_t>(pin)] = (pin > 24) != sweep.right        ? 0
                                                          : (pin == driven) != sweep.level ? 2
                                                                                           : 1;
        // The order in which a port's bits are looked at.
        for (int port = 0; port < 6; ++port) {
            for (int bit = 0; bit < 8; ++bit) {
                const int pin = bit < 4 ? 21 + bit - 4 * port : 21 + bit + 4 * port;
                if (state.closed.contains(pin) || std::ranges::count(state.faults.touched, pin) == 0) continue;
                const bool linked = pin == driven || pin == pins + 1 - driven;
                if (state.read(pin) == (sweep.level != linked) || !asked.insert(pin).second) continue;
                seen.push_back(pin_finding("output", pin, driven, state.read(pin)));
            }
        }
    }
}

}  // namespace

std::string single_fault::text() const
{
    using enum fault_kind;
    constexpr const char* drivers[] = {"vpp", "vpp", "vcc", "vcc", "ground", "ground", "high", "high", "low", "low"};
    const auto number = static_cast<std::size_t>(kind);
    const std::string place = std::to_string(at);
    if (number < 10) return drivers[number] + (" driver " + place) + (number % 2 == 0 ? " dead" : " always on");
    switch (kind) {
    case stuck_low: return "input " + place + " stuck 0";
    case stuck_high: return "input " + place + " stuck 1";
    case bridge: return "pins " + place + " and " + std::to_string(at + 1) + " bridged";
    case pull_down_dead: return "pull-down " + place + " dead";
    case line_open: return "test board line " + place + " open";
    case bad_register: return "bad register " + place + " of board " + std::to_string(board);
    default: return "bad ram bank " + place;
    }
}

finding finding_of(const selftest_fault& found)
{
    if (found.stage == selftest_stage::ram) return "bank " + std::to_string(found.place);
    if (found.stage == selftest_stage::registers)
        return "register " + std::to_string(found.place) + " board " + std::to_string(found.board) + " " +
               std::to_string(found.read);
    return pin_finding(name_of(found.stage).c_str(), found.pin, found.driven_pin, found.read != 0);
}

std::vector<finding> seen_by_system_test(const situation& where, std::span<const single_fault> faults)
{
    std::vector<finding> seen;
    for (const single_fault& one : faults)
        if (one.kind == fault_kind::bad_bank && one.at < (where.model >= 40 ? 16 : 4))
            seen.push_back("bank " + std::to_string(one.at));
    const model_facts facts = facts_of(where.model);
    const fault_table table{faults, false};
    const electronics pulled_up{.faults = table, .rails_up = true};
    const electronics pulled_down{.faults = table, .rails_up = true, .pulled_down = true};
    see_inputs(where, pulled_up, true, seen);
    see_inputs(where, pulled_down, false, seen);
    see_drivers(where, pulled_down, true, facts.vpp, seen);
    see_drivers(where, pulled_down, false, facts.vcc, seen);
    see_registers(where, table, seen);
    std::ranges::sort(seen);
    return seen;
}

std::vector<finding> seen_by_output_test(const situation& where, std::span<const single_fault> faults)
{
    std::vector<finding> seen;
    const bool newer = where.model >= 40;
    const fault_table table{faults, true};
    for (const sweep_facts& sweep : newer ? std::span<const sweep_facts>{from_40} : std::span{below_40}) {
        const bool by_board_7 = newer || (sweep.limit == 4 && where.generation != 17);
        electronics state{.faults = table, .rails_up = by_board_7 && !newer, .vcc_up = newer};
        state.pulled_down = by_board_7 && !newer && !where.usb && !sweep.level;
        if (!by_board_7 && where.generation != 17) state.closed = {1, 2, 3, 4, 45, 46, 47, 48};
        see_sweep(state, sweep, seen);
    }
    std::ranges::sort(seen);
    return seen;
}

std::string why_invisible(const situation& where, const single_fault& fault)
{
    using enum fault_kind;
    const model_facts facts = facts_of(where.model);
    switch (fault.kind) {
    case bad_bank: return "the model does not have this bank";
    case bad_register: return "the model does not test this register";
    case ground_dead: return "the ground stage shows nothing and asks nothing";
    case high_dead: return "a released pin is pulled up as well";
    case low_dead: return "no register test of its port drives this pin low";
    case line_open: return "only an Output Test uses the board";
    case vpp_dead:
    case vcc_dead: {
        const auto& list = fault.kind == vpp_dead ? facts.vpp : facts.vcc;
        if (std::ranges::count(list, fault.at) == 0) return "the model does not switch this driver";
        break;
    }
    case high_on:
        if (where.test_board) return "a port that drives low is stronger, and others are pulled up";
        break;
    case bridge:
        if (where.test_board) return "the board joins these pins as well";
        if (facts.vpp.empty() && facts.vcc.empty()) return "no stage drives one pin alone";
        if (where.model == 15 || where.model == 57) return "the model switches no driver at either pin";
        break;
    default: break;
    }
    return "only generation 17 reads this pin";
}

}  // namespace tamrix::tests
