#include "channel/send.h"

#include "base/other_side.h"
#include "session/session.h"

namespace tamrix::hw {

bool send(session& plug_in, frame_length length)
{
    auto& frame = plug_in.blocks.ubuf1;
    const auto bytes = static_cast<std::int32_t>(length);
    (void)frame(std::int64_t{bytes} - 1);  // there are as many
    const std::int32_t result = plug_in.hardware.transport().usbcomwrite(&frame(0), bytes);
    write_other_side(plug_in.blocks.prgresult(0), static_cast<std::uint8_t>(result));
    return result != prgresult_write_failed;
}

}  // namespace tamrix::hw
