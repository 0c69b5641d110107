#include "selftest/pin_read.h"

#include "channel/ports.h"
#include "messages/message_numbers.h"
#include "selftest/socket_frame.h"
#include "session/session.h"

namespace tamrix {

namespace {

bool read_released(const socket_frame& form, const pin_access& access, int level, hw::port_bytes& pins)
{
    if (form.by_usb()) {
        const bool sent = send_pins(form, access, all_ports(level != 0 ? 255 : 0), hw::released_ports);
        return sent && read_pins(form, hw::port_count, pins);
    }
    for (std::size_t port = 0; port < hw::port_count; ++port) form.device().regout(255, hw::mask_register(port));
    return read_pins(form, hw::port_count, pins);
}

}  // namespace

stage_end test_inputs(socket_frame& form, const pin_access& access, int level)
{
    form.device().regout(level == 0 ? 1 : 0, level_switch);
    if (!form.by_usb()) form.device().delayms(100);
    hw::port_bytes pins{};
    if (!read_released(form, access, level, pins)) return form.communication_error();
    bool faulty = false;
    for (int port = 0; port < checked_ports(form); ++port) {
        for (int bit = 0; bit < 8; ++bit) {
            const int read = pins[static_cast<std::size_t>(port)] >> bit & 1;
            if (read == level) continue;
            const int line = lamps::of_bit(port, bit);
            faulty = true;
            form.socket.paint_lamp(lamp_of(access, line), level != 0 ? lamps::magenta : lamps::yellow);
            selftest_fault found = fault_at(form, access, selftest_stage::input, line);
            found.expected = level;
            found.read = read;
            form.add(found);
        }
    }
    if (!faulty) return stage_end::passed;
    form.status(form.plug_in().text(level != 0 ? message::input_is_low : message::input_is_high));
    return form.runstp() == decision::stop ? stage_end::stopped : stage_end::passed;
}

}  // namespace tamrix
