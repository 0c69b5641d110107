// What the sweeps of an Output Test see, in their order.
#include "faulty_socket.h"

#include <algorithm>

namespace tamrix::tests {

namespace {

struct sweep {
    int first, limit;
    bool level, right;
};
constexpr sweep inner_lines[] = {
    {4, 24, true, false}, {4, 24, false, false}, {4, 24, false, true}, {4, 24, true, true}};
constexpr sweep outer_lines[] = {{0, 4, false, false}, {0, 4, true, false}, {0, 4, false, true}, {0, 4, true, true}};
constexpr sweep whole_sides[] = {
    {0, 24, true, false}, {0, 24, false, false}, {0, 24, false, true}, {0, 24, true, true}};

/// Where no module answers the bus reads high.
std::vector<single_fault> silence_of(int module)
{
    std::vector<single_fault> all;
    for (int pin = 1; pin <= most_pins; ++pin)
        all.push_back({.kind = fault_kind::stuck_high, .at = pin, .module = module});
    return all;
}

/// One socket with the board.
struct output_test {
    const situation& where;
    const faulty_socket& socket;
    std::vector<finding>& seen;

    /// One line differs from all others of its side; the other side is only read.
    void see(const sweep& one, moment now)
    {
        places asked = ~socket.model.socket.wired | now.closed;
        for (int line = one.first; line < one.limit; ++line) {
            const int place = place_of_line(one.right ? 47 - line : line);
            const places side = one.right ? every_place & ~left_places : left_places, itself = place_set(place);
            now.low = one.level ? itself : side & ~itself;
            now.high = socket.model.ports_only_low ? 0 : side & ~now.low;
            const places read = levels_of(socket, now);
            const places linked = itself | place_set(partner_of(place));
            const places wrong = (read ^ linked ^ (one.level ? every_place : 0)) & ~asked;
            add_findings(seen, selftest_stage::output, socket,
                         socket.model.socket.told[static_cast<std::size_t>(place)], wrong, read);
            asked |= wrong;
        }
    }

    void see_in_two_parts()
    {
        moment now{};
        if (where.generation != 17) now.closed = outermost_places;
        for (const sweep& one : inner_lines) see(one, now);
        if (where.generation != 17) now = {.vpp_rail = true, .vcc_rail = true};
        for (const sweep& one : outer_lines) {
            now.pulled_down = where.generation != 17 && !where.usb && !one.level;
            see(one, now);
        }
    }

    void see_small_socket()
    {
        for (const sweep& one : inner_lines) see(one, {});
    }

    /// With VCC on its rail. In a module the rail of VPP rests at the same voltage, and its inputs are pulled down.
    void see_whole_sides()
    {
        const bool module = socket.module != 0;
        for (sweep one : whole_sides) {
            one.level = one.level != where.low_first;
            see(one, {.vpp_rail = module, .vcc_rail = true, .pulled_down = module});
        }
    }
};

}  // namespace

std::vector<finding> seen_by_output_test(const situation& where, std::span<const single_fault> faults)
{
    std::vector<finding> seen;
    const tested_model model = tested_model_of(where.model);
    for (int module = model.modules == 0 ? 0 : 1; module <= model.modules; ++module) {
        if (has(faults, fault_kind::board_missing, module)) continue;
        const bool missing = has(faults, fault_kind::module_missing, module);
        if (missing && where.usb) break;
        const auto silence = missing ? silence_of(module) : std::vector<single_fault>{};
        const faulty_socket socket{model, module, missing ? silence : faults, true};
        output_test run{where, socket, seen};
        if (model.ports_only_low) {
            run.see_small_socket();
        } else if (where.model >= 40 || module != 0) {
            run.see_whole_sides();
        } else {
            run.see_in_two_parts();
        }
    }
    return seen;
}

selftest_result end_of_output_test(const situation& where, std::span<const single_fault> faults)
{
    const auto is_there = [&](fault_kind kind) { return std::ranges::count(faults, kind, &single_fault::kind) != 0; };
    if (where.usb && is_there(fault_kind::module_missing)) return selftest_result::communication_error;
    if (!seen_by_output_test(where, faults).empty()) return selftest_result::failed;
    return is_there(fault_kind::board_missing) ? selftest_result::no_test_board : selftest_result::passed;
}

}  // namespace tamrix::tests
