#include "chips/vector_run.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <set>

namespace tamrix::sim {
namespace {

/// Five fixed orders, the others shuffled: with so many, any three pins have changed in all their orders.
std::vector<order_lanes> many_orders()
{
    std::vector<order_lanes> made;
    constexpr std::array fixed{order::ports_upward, order::ports_downward, order::pins_upward, order::pins_downward,
                               order::at_once};
    for (std::size_t lane = 0; lane < 64; ++lane)
        made.push_back({lane < fixed.size() ? fixed[lane] : order::shuffled, word{1} << lane});
    return made;
}

/// Lane 0 wakes up with all at 0, lane 1 with all at 1, the others at random.
std::vector<word> random_words(std::size_t count, random_source& random)
{
    std::vector<word> made(count);
    for (auto& each : made) each = (random.bits() & ~word{3}) | 2;
    return made;
}

/// The registers that each gate reads.
std::vector<std::set<std::size_t>> read_registers(const circuit& plan)
{
    std::vector<std::set<std::size_t>> made(plan.gates.size());
    for (std::size_t id = 0; id < plan.gates.size(); ++id) {
        const auto& at = plan.gates[id];
        if (at.kind == gate_kind::reg) made[id].insert(at.a);
        if (at.kind >= gate_kind::invert) made[id] = made[at.a];
        if (at.kind > gate_kind::invert) made[id].insert(made[at.b].begin(), made[at.b].end());
    }
    return made;
}

void stick(tester& socket, const stuck_fault& fault, word lane)
{
    if (fault.gate != stuck_fault::none) socket.stick_gate(static_cast<gate_id>(fault.gate), lane, fault.high);
    if (fault.pin != stuck_fault::none) socket.stick(fault.pin, lane, fault.high);
}

}  // namespace

std::vector<stuck_fault> inner_faults_of(const circuit& plan)
{
    std::vector<stuck_fault> made;
    for (std::size_t id = 0; id < plan.gates.size(); ++id) {
        if (plan.gates[id].kind < gate_kind::reg) continue;
        made.push_back({stuck_fault::none, false, id});
        made.push_back({stuck_fault::none, true, id});
    }
    return made;
}

std::vector<stuck_fault> faults_of(const circuit& plan)
{
    std::vector<stuck_fault> made;
    for (std::size_t pin = 0; pin < plan.pins.size(); ++pin) {
        const auto role = plan.pins[pin].role;
        if (role != pin_role::input && role != pin_role::output && role != pin_role::both) continue;
        made.push_back({pin, false});
        made.push_back({pin, true});
    }
    return made;
}

std::shared_ptr<const good_run::reach> good_run::reach_of(const circuit& plan)
{
    const auto direct = read_registers(plan);
    auto made = std::make_shared<reach>();
    const auto list = [&](gate_id id) { return std::vector<std::size_t>(direct[id].begin(), direct[id].end()); };
    for (const auto& at : plan.pins) {
        made->values.push_back(list(at.value));
        made->enables.push_back(list(at.enable));
    }
    for (const auto id : plan.avoided) made->avoided.push_back(list(id));
    return made;
}

good_run::good_run(std::shared_ptr<const circuit> plan)
    : socket_{plan, many_orders(), 1}, reach_{reach_of(*plan)}, known_(plan->registers.size())
{
    random_source random{std::uint64_t{2}};
    const auto registers = random_words(plan->registers.size(), random);
    auto levels = random_words(plan->pins.size(), random);
    for (auto& each : levels) each |= 1;  // before a run the ports are released and pulled up
    socket_.power_up(registers, levels);
}

std::optional<std::string> good_run::apply(const row_acts& row)
{
    socket_.apply(row);
    if (socket_.fought() || !take_registers() || avoided() || careless(row)) return {};
    last_ = row;
    std::string letters;
    for (std::size_t pin = 0; pin < row.size(); ++pin) letters += letter(pin, row[pin]);
    return letters;
}

/// False where a register that was known has come to differ between the lanes.
bool good_run::take_registers()
{
    for (std::size_t i = 0; i < known_.size(); ++i) {
        const auto state = socket_.chip().state(i);
        const bool agreed = state == 0 || state == all_lanes;
        if (known_[i] && !agreed) return false;
        known_[i] = agreed;
    }
    return true;
}

bool good_run::avoided() const
{
    const auto& plan = socket_.plan();
    for (std::size_t i = 0; i < plan.avoided.size(); ++i) {
        const auto value = socket_.chip().gate(plan.avoided[i]);
        if (value == all_lanes || (value != 0 && known(reach_->avoided[i]))) return true;
    }
    return false;
}

/// Row 0 comes out of an unknown past, so only where it ends counts.
bool good_run::careless(const row_acts& row) const
{
    const auto& cautions = socket_.plan().cautions;
    if (last_.empty())
        return std::ranges::any_of(
            cautions, [this](const caution& at) { return at.pins.empty() && socket_.chip().gate(at.condition) != 0; });
    const auto level_changes = [&](std::size_t pin) { return (row[pin] == act::high) != (last_[pin] == act::high); };
    for (std::size_t i = 0; i < cautions.size(); ++i)
        if (socket_.met(i) != 0 && (cautions[i].pins.empty() || std::ranges::any_of(cautions[i].pins, level_changes)))
            return true;
    return false;
}

bool good_run::known(const std::vector<std::size_t>& registers) const
{
    return std::ranges::all_of(registers, [this](std::size_t i) { return known_[i]; });
}

std::size_t good_run::known_registers() const { return static_cast<std::size_t>(std::ranges::count(known_, true)); }

char good_run::letter(std::size_t pin, act done) const
{
    const auto& at = socket_.plan().pins[pin];
    switch (at.role) {
    case pin_role::vcc: return 'V';
    case pin_role::gnd: return 'G';
    case pin_role::none: return 'X';
    default: break;
    }
    if (done != act::release) return done == act::pulse ? 'C' : done == act::high ? '1' : '0';
    const auto enable = socket_.chip().driven(pin), level = socket_.chip().level(pin);
    if (!known(reach_->enables[pin]) || (enable != 0 && enable != all_lanes)) return 'X';
    if (enable == 0) return at.open_collector ? 'H' : 'Z';
    if (!known(reach_->values[pin]) || (level != 0 && level != all_lanes)) return 'X';
    return level != 0 ? 'H' : 'L';
}

faulty_runs::faulty_runs(const std::shared_ptr<const circuit>& plan, const std::vector<stuck_fault>& faults)
    : count_{faults.size()}
{
    constexpr std::array<order, scenarios> orders{order::pins_upward, order::pins_downward, order::shuffled,
                                                  order::at_once};
    random_source random{std::uint64_t{3}};
    for (std::size_t first = 0; first < count_; first += 64) {
        for (std::size_t scenario = 0; scenario < scenarios; ++scenario) {
            const auto lanes = std::min<std::size_t>(64, count_ - first);
            batch made{{plan, {{orders[scenario], all_lanes}}, 17 + scenario},
                       first,
                       0,
                       lanes == 64 ? all_lanes : (word{1} << lanes) - 1};
            std::vector<word> registers(plan->registers.size()), levels(plan->pins.size(), all_lanes);
            for (auto& each : registers) each = scenario == 0 ? 0 : scenario == 1 ? all_lanes : random.bits();
            if (scenario == 1) std::ranges::fill(levels, 0);
            if (scenario == 2)
                for (auto& each : levels) each = random.bits();
            for (std::size_t lane = 0; lane < lanes; ++lane) stick(made.socket, faults[first + lane], word{1} << lane);
            made.socket.power_up(registers, levels);
            batches_.push_back(std::move(made));
        }
    }
}

void faulty_runs::apply(const row_acts& row, const std::string& letters)
{
    for (auto& each : batches_) {
        each.socket.apply(row);
        for (std::size_t pin = 0; pin < row.size(); ++pin) {
            const auto seen = each.socket.node(pin);
            if (letters[pin] == 'H' || letters[pin] == 'Z') each.failed |= ~seen & each.lanes;
            if (letters[pin] == 'L') each.failed |= seen & each.lanes;
        }
    }
}

bool faulty_runs::found(std::size_t fault) const
{
    const auto from = batches_.begin() + static_cast<std::ptrdiff_t>(fault / 64 * scenarios);
    return std::all_of(from, from + scenarios, [&](const batch& at) { return (at.failed >> (fault % 64) & 1) != 0; });
}

std::size_t faulty_runs::found_count() const
{
    std::size_t count = 0;
    for (std::size_t fault = 0; fault < count_; ++fault) count += found(fault) ? 1 : 0;
    return count;
}

std::size_t faulty_runs::failed_runs() const
{
    return std::accumulate(batches_.begin(), batches_.end(), std::size_t{0}, [](std::size_t sum, const batch& at) {
        return sum + static_cast<std::size_t>(std::popcount(at.failed));
    });
}

}  // namespace tamrix::sim
