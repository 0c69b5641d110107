// What the stages of a System Test see, in their order.
#include "faulty_socket.h"

#include <algorithm>

namespace tamrix::tests {

namespace {

constexpr int banks_of_module = 16;
constexpr int registers_of_board[] = {4, 0, 4, 2, 0, 0, 2, 5, 5, 3, 2, 2, 2, 2, 0, 5, 0};

/// A run on one programmer.
struct system_test {
    const situation& where;
    const tested_model model;
    const std::span<const single_fault> faults;
    std::vector<finding> seen{};

    places readable() const
    {
        return model.socket.wired & (where.generation == 17 ? every_place : every_place & ~outermost_places);
    }

    void see_bank(int bank, int module)
    {
        // What a module has kept passes through the same bank of the unit.
        const auto is_bad = [&](int of) {
            return std::ranges::any_of(faults, [&](const single_fault& one) {
                return one.kind == fault_kind::bad_bank && one.at == bank && one.module == of;
            });
        };
        if (is_bad(0) != (module != 0 && is_bad(module)))
            seen.push_back({.stage = selftest_stage::ram, .module = module, .at = bank});
    }

    void see_memory()
    {
        if (model.memory_alone && !where.usb) return;
        for (int bank = 0; bank < model.banks; ++bank) see_bank(bank, 0);
    }

    void see_inputs(const faulty_socket& socket, bool level, bool pulled_down)
    {
        const places read = levels_of(socket, {.vpp_rail = true, .vcc_rail = true, .pulled_down = pulled_down});
        const places wrong = (read ^ (level ? every_place : 0)) & readable();
        add_findings(seen, selftest_stage::input, socket, 0, wrong, read);
    }

    void see_drivers(const faulty_socket& socket, selftest_stage stage)
    {
        const bool vpp = stage == selftest_stage::vpp;
        moment now{.vpp_rail = true, .vcc_rail = true, .pulled_down = true};
        for (const int driven : vpp ? model.vpp : model.vcc) {
            const places expected = place_set(model.socket.place[static_cast<std::size_t>(driven)]);
            (vpp ? now.vpp : now.vcc) = expected;
            const places read = levels_of(socket, now);
            add_findings(seen, stage, socket, driven, (read ^ expected) & readable(), read);
        }
    }

    /// With zeros written the registers show the pins of their ports, all driven low.
    void see_board(const faulty_socket& socket, int board)
    {
        const int count = registers_of_board[board];
        moment now{.vpp_rail = board == 3 || board == 7, .vcc_rail = board == 3 || board == 7};
        for (int port = 0; port < 6; ++port)
            if (where.usb || (port >= 1 && port <= count)) now.low |= port_set(port);
        if (where.generation != 17 && board != 7) now.closed = outermost_places;
        const places read = levels_of(socket, now) & ~now.closed & model.socket.wired;
        for (int reg = 1; reg <= count; ++reg) {
            int byte = static_cast<int>(read >> 8 * reg & 0xFF);
            if (socket.bad_registers.contains({board, reg})) byte ^= 1;
            if (byte == 0) continue;
            seen.push_back({.stage = selftest_stage::registers, .at = reg, .driven = board, .read = byte});
            return;
        }
    }

    void see_registers(const faulty_socket& socket)
    {
        const int last = where.usb ? model.last_board_usb : model.last_board_registers;
        for (int board = 0; board <= last; ++board) {
            if (board == 7 && where.generation == 17) continue;
            if ((board == 3 || board == 4) && !model.boards_3_and_4) continue;
            see_board(socket, board);
        }
    }

    void see_socket()
    {
        const faulty_socket socket{model, 0, faults, false};
        see_inputs(socket, true, false);
        see_inputs(socket, false, true);
        see_drivers(socket, selftest_stage::vpp);
        see_drivers(socket, selftest_stage::vcc);
        see_registers(socket);
    }

    /// Nothing answers. What is read as its memory is what the unit has left, and the bus reads high.
    bool see_missing_module(int module)
    {
        for (int bank = 0; bank < banks_of_module; ++bank)
            seen.push_back({.stage = selftest_stage::ram, .module = module, .at = bank});
        if (where.usb) return false;
        add_findings(seen, selftest_stage::input, faulty_socket{model, module, {}, false}, 0, readable(), every_place);
        seen.push_back({.stage = selftest_stage::fpga, .module = module});
        return false;
    }

    /// False if it is the last one that is tested.
    bool see_module(int module)
    {
        if (has(faults, fault_kind::module_missing, module)) return see_missing_module(module);
        const faulty_socket socket{model, module, faults, false};
        for (int bank = 0; bank < banks_of_module; ++bank) see_bank(bank, module);
        see_inputs(socket, false, true);
        if (has(faults, fault_kind::fpga_idle, module)) {
            seen.push_back({.stage = selftest_stage::fpga, .module = module});
            return false;
        }
        see_inputs(socket, true, false);
        see_drivers(socket, selftest_stage::vpp);
        see_drivers(socket, selftest_stage::vcc);
        return true;
    }
};

}  // namespace

std::vector<finding> seen_by_system_test(const situation& where, std::span<const single_fault> faults)
{
    system_test run{where, tested_model_of(where.model), faults};
    run.see_memory();
    if (run.model.memory_alone) return run.seen;
    if (run.model.modules == 0) run.see_socket();
    for (int module = 1; module <= run.model.modules; ++module)
        if (!run.see_module(module)) break;
    return run.seen;
}

selftest_result end_of_system_test(const situation& where, std::span<const single_fault> faults)
{
    const bool missing = std::ranges::count(faults, fault_kind::module_missing, &single_fault::kind) != 0;
    if (missing && where.usb) return selftest_result::communication_error;
    const auto seen = seen_by_system_test(where, faults);
    const bool fails = std::ranges::any_of(seen, [](const finding& one) { return one.stage != selftest_stage::ram; });
    return fails ? selftest_result::failed : selftest_result::passed;
}

}  // namespace tamrix::tests
