#include "channel/frames.h"

#include "channel/send.h"
#include "session/session.h"

namespace tamrix::hw {

bool send_pin_frame(session& plug_in, const port_bytes& outputs, const port_bytes& companions, frame_length length)
{
    auto& frame = plug_in.blocks.ubuf1;
    frame(0) = pin_command;
    for (std::size_t b = 0; b < port_count; ++b) {
        frame(static_cast<std::int64_t>(1 + 2 * b)) = outputs[b];
        frame(static_cast<std::int64_t>(2 + 2 * b)) = companions[b];
    }
    return send(plug_in, length);
}

bool send_bulk_frame(session& plug_in, std::uint8_t block, std::uint8_t direction, frame_length length)
{
    auto& frame = plug_in.blocks.ubuf1;
    frame(0) = bulk_command;
    frame(1) = block;
    frame(2) = direction;
    return send(plug_in, length);
}

bool end_bulk(session& plug_in, frame_length length) { return send_bulk_frame(plug_in, 0, bulk_end, length); }

bool send_script_frame(session& plug_in)
{
    return send_bulk_frame(plug_in, script_block, bulk_from_ram, frame_length::bulk);
}

}  // namespace tamrix::hw
