#include "channel/ports.h"

#include "base/other_side.h"
#include "session/session.h"

namespace tamrix::hw {

bool ports::drive(const port_bytes& data, const port_bytes& masks)
{
    masks_ = masks;
    if (by_frames()) return drive_data(data);
    devobj& device = plug_in_.hardware.device();
    for (std::size_t b = 0; b < port_count; ++b) {
        device.regout(data[b], data_register(b));
        device.regout(masks[b], mask_register(b));
    }
    return true;
}

bool ports::drive_data(const port_bytes& data)
{
    if (by_frames()) return send_pin_frame(plug_in_, data, masks_, length_);
    for (std::size_t b = 0; b < port_count; ++b) plug_in_.hardware.device().regout(data[b], data_register(b));
    return true;
}

bool ports::release()
{
    if (by_frames()) return drive(released_ports, released_ports);
    // The masks first, unlike drive(): no pin is driven high on its way.
    devobj& device = plug_in_.hardware.device();
    for (std::size_t b = 0; b < port_count; ++b) {
        device.regout(released_ports[b], mask_register(b));
        device.regout(released_ports[b], data_register(b));
    }
    return true;
}

bool ports::read(port_bytes& pins)
{
    devobj& device = plug_in_.hardware.device();
    if (by_frames() && !device.replywait(3, 0, 0)) return false;
    for (std::size_t b = 0; b < port_count; ++b) {
        pins[b] = by_frames() ? read_other_side(plug_in_.blocks.ibuf1(static_cast<std::int64_t>(b)))
                              : static_cast<std::uint8_t>(device.regin(data_register(b)));
    }
    return true;
}

}  // namespace tamrix::hw
