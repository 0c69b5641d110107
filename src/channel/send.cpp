#include "channel/send.h"

#include "base/other_side.h"
#include "session/session.h"

namespace tamrix::hw {

bool send(session& plug_in, std::int32_t length)
{
    auto& frame = plug_in.blocks.ubuf1;
    (void)frame(length - 1);  // there are as many
    const std::int32_t result = plug_in.hardware.transport().usbcomwrite(&frame(0), length);
    write_other_side(plug_in.blocks.prgresult(0), static_cast<std::uint8_t>(result));
    return result != prgresult_write_failed;
}

}  // namespace tamrix::hw
