#include "selftest/output_sweep.h"

#include "channel/ports.h"
#include "messages/message_numbers.h"
#include "selftest/socket_frame.h"
#include "session/session.h"

#include <algorithm>
#include <set>
#include <vector>

namespace tamrix {

namespace {

constexpr int lines_of_port = 4, last_port = 5, last_lamp = lamps::count - 1;
constexpr std::uint8_t right_released = 240, left_released = 15;

int port_of(int line) { return last_port - line / lines_of_port; }

class sweep {
public:
    sweep(socket_frame& form, const pin_access& access, const sweep_plan& plan)
        : form_{form}, access_{access}, plan_{plan}
    {}

    stage_end go(std::span<const int> no_board_counts)
    {
        if (!prepare()) return form_.communication_error();
        for (int line = plan_.first; line < plan_.limit; ++line)
            if (!test(line)) return form_.communication_error();
        if (std::ranges::find(no_board_counts, static_cast<int>(found_.size())) != no_board_counts.end()) {
            form_.clearpins();
            return stage_end::no_test_board;
        }
        return ask();
    }

private:
    bool prepare() const
    {
        for (int time = 0; time < 2; ++time) {
            const std::uint8_t masks = plan_.side == 0 ? right_released : left_released;
            if (!send_pins(form_, access_, all_ports(idle()), all_ports(masks))) return false;
            form_.device().delayms(500);
        }
        return true;
    }

    /// The port that the sweep leaves goes back to idle: its last line would be seen as a fault of the next ones.
    bool test(int line)
    {
        hw::devobj& device = form_.device();
        if (line > plan_.first && port_of(line) != port_of(line - 1)) device.regout(idle(), data_register_of(line - 1));
        device.regout(driven(line), data_register_of(line));
        hw::port_bytes read{};
        if (!read_pins(form_, hw::port_count, read)) return false;
        for (int port = 0; port < static_cast<int>(hw::port_count); ++port) {
            for (int bit = 0; bit < 8; ++bit)
                compare(line, lamps::of_bit(port, bit), read[static_cast<std::size_t>(port)] >> bit & 1);
        }
        return true;
    }

    void compare(int line, int at, int level)
    {
        const bool linked = at == line || at == last_lamp - line;
        if ((level != plan_.level) == linked) return;
        const forms::colour ink = plan_.level != 0 ? lamps::magenta : lamps::yellow;
        form_.socket.paint_lamp(lamp_of(access_, line), ink);
        form_.socket.paint_mark(lamp_of(access_, line), ink);
        form_.socket.paint_lamp(lamp_of(access_, at), ink);
        selftest_fault found = fault_at(form_, access_, selftest_stage::output, at);
        const int driven_line = plan_.side == 0 ? line : last_lamp - line;
        found.driven_pin = fault_at(form_, access_, selftest_stage::output, driven_line).pin;
        found.expected = 1 - level;
        found.read = level;
        found_.push_back(found);
    }

    /// Once a pin: an open line shows while each of the others is driven.
    stage_end ask()
    {
        std::set<int> asked;
        for (const selftest_fault& one : found_) {
            if (!asked.insert(8 * one.port + one.bit).second) continue;
            form_.add(one);
            form_.status(form_.plug_in().text(plan_.level == 0 ? message::output_is_high : message::output_is_low));
            if (form_.runstp() == decision::stop) return stage_end::stopped;
        }
        return form_.closed() ? stage_end::stopped : stage_end::passed;
    }

    std::uint8_t idle() const { return plan_.level != 0 ? 255 : 0; }
    std::uint8_t driven(int line) const
    {
        const int place = line % lines_of_port;
        const int bit = plan_.side == 0 ? 1 << place : 128 >> place;
        return static_cast<std::uint8_t>(plan_.level != 0 ? 255 - bit : bit);
    }
    static std::uint8_t data_register_of(int line)
    {
        return hw::data_register(static_cast<std::size_t>(port_of(line)));
    }

    socket_frame& form_;
    const pin_access& access_;
    const sweep_plan& plan_;
    std::vector<selftest_fault> found_;
};

}  // namespace

stage_end sweep_outputs(socket_frame& form, const pin_access& access, std::span<const int> no_board_counts,
                        const sweep_plan& plan)
{
    return sweep{form, access, plan}.go(no_board_counts);
}

}  // namespace tamrix
