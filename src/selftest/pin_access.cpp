#include "selftest/pin_access.h"

#include "base/other_side.h"
#include "channel/ports.h"
#include "selftest/socket_frame.h"
#include "session/session.h"

namespace tamrix {

namespace {

constexpr int first_line_of_table = 4, ports_of_all = 6, ports_of_most = 5;

}  // namespace

int lamp_of(const pin_access& access, int line)
{
    if (access.lamp_of_line.empty()) return line;
    const int entry = line - first_line_of_table;
    const bool listed = entry >= 0 && entry < static_cast<int>(access.lamp_of_line.size());
    return listed ? access.lamp_of_line[static_cast<std::size_t>(entry)] : -1;
}

selftest_fault fault_at(const socket_frame& form, const pin_access& access, selftest_stage stage, int line)
{
    const int lamp = lamp_of(access, line);
    const lamps::port_bit place = lamps::bit_of(line);
    const lamps::socket drawn = form.socket.drawn();
    return {.stage = stage,
            .pin = drawn.has(lamp) ? drawn.pin_of(lamp) : 0,
            .port = place.port,
            .bit = place.bit,
            .slot = access.slot};
}

bool send_pins(const socket_frame& form, const pin_access& access, const hw::port_bytes& outputs,
               const hw::port_bytes& masks)
{
    if (access.slot != 0) form.plug_in().blocks.ubuf1(hw::slot_byte_of_pin_frame) = access.slot;
    return hw::send_pin_frame(form.plug_in(), outputs, masks, access.length);
}

bool read_pins(const socket_frame& form, int count, hw::port_bytes& pins)
{
    if (form.by_usb() && !form.device().replywait(3, 0, 0)) return false;
    for (int port = 0; port < count; ++port) {
        const auto at = static_cast<std::size_t>(port);
        pins[at] = form.by_usb() ? hw::read_other_side(form.plug_in().blocks.ibuf1(port))
                                 : static_cast<std::uint8_t>(form.device().regin(hw::data_register(at)));
    }
    return true;
}

int checked_ports(const socket_frame& form) { return form.generation_17() ? ports_of_all : ports_of_most; }

}  // namespace tamrix
