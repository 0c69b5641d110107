#include "faulty_socket.h"

namespace tamrix::tests {

faulty_socket::faulty_socket(const tested_model& its_model, int its_module, std::span<const single_fault> faults,
                             bool board)
    : model{its_model}, module{its_module}
{
    const auto place_at = [this](int pin) { return place_set(model.socket.place[static_cast<std::size_t>(pin)]); };
    for (const single_fault& one : faults) {
        if (one.module != module) continue;
        if (one.kind == fault_kind::bad_register) bad_registers.emplace(one.board, one.at);
        if (one.kind >= fault_kind::bad_register || one.at > model.socket.pins) continue;
        by_kind[static_cast<std::size_t>(one.kind)] |= place_at(one.at);
        if (one.kind == fault_kind::bridge) join(place_at(one.at) | place_at(one.at + 1));
    }
    if (!board) return;
    const places open = of(fault_kind::line_open);
    for_each_place(left_places, [&](int place) {
        const places both = place_set(place) | place_set(partner_of(place));
        if ((open & both) == 0) join(both);
    });
}

void faulty_socket::join(places some)
{
    std::erase_if(nets, [&some](places net) {
        const bool touches = (net & some) != 0;
        if (touches) some |= net;
        return touches;
    });
    nets.push_back(some);
}

places faulty_socket::spread(places some) const
{
    if (some == 0) return 0;
    // Without iterators, which are slow where nothing is optimised.
    const places* const all = nets.data();
    for (std::size_t net = 0, count = nets.size(); net < count; ++net)
        if ((some & all[net]) != 0) some |= all[net];
    return some;
}

places levels_of(const faulty_socket& socket, const moment& now)
{
    using enum fault_kind;
    const auto driven = [&socket](places wanted, fault_kind dead, fault_kind on) {
        return (wanted & ~socket.of(dead)) | socket.of(on);
    };
    places supplied = 0;
    if (now.vpp_rail) supplied |= driven(now.vpp, vpp_dead, vpp_on);
    if (now.vcc_rail) supplied |= driven(now.vcc, vcc_dead, vcc_on);
    const places ground = socket.spread(socket.of(ground_on)), supply = socket.spread(supplied),
                 low = socket.spread(driven(now.low & ~now.closed, low_dead, low_on)),
                 high = socket.spread(driven(now.high & ~now.closed, high_dead, high_on)),
                 down = now.pulled_down ? socket.spread(every_place & ~socket.of(pull_down_dead)) : 0;
    const places levels = ~ground & (supply | (~low & (high | ~down)));
    return ((levels | socket.of(stuck_high)) & ~socket.of(stuck_low)) & every_place;
}

void add_findings(std::vector<finding>& seen, selftest_stage stage, const faulty_socket& socket, int driven,
                  places wrong, places read)
{
    for_each_place(wrong, [&](int place) {
        seen.push_back({.stage = stage,
                        .module = socket.module,
                        .at = socket.model.socket.told[static_cast<std::size_t>(place)],
                        .driven = driven,
                        .read = static_cast<int>(read >> place & 1)});
    });
}

}  // namespace tamrix::tests
