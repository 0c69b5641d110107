#include "channel/bulk_write.h"

#include "base/errors.h"
#include "base/other_side.h"
#include "channel/send.h"
#include "session/session.h"

#include <algorithm>

namespace tamrix::hw {

bool begin_bulk_write(session& plug_in, std::uint8_t first, frame_length frame, std::int32_t wait_ms)
{
    if (!send_bulk_frame(plug_in, first, bulk_to_ram, frame)) return false;
    plug_in.hardware.device().delayms(wait_ms);
    return true;
}

bool write_blocks(session& plug_in, std::span<const std::uint8_t> data, std::int32_t block_bytes, std::int32_t wait_ms)
{
    if (block_bytes <= 0) throw subscript_error{"a bulk block of " + std::to_string(block_bytes) + " bytes"};
    while (!data.empty()) {
        const auto now = data.first(std::min<std::size_t>(data.size(), static_cast<std::size_t>(block_bytes)));
        const std::int32_t result =
            plug_in.hardware.transport().usbbulkwrite(now.data(), static_cast<std::int32_t>(now.size()));
        write_other_side(plug_in.blocks.prgresult(0), static_cast<std::uint8_t>(result));
        if (result == prgresult_write_failed) return false;
        if (wait_ms != 0) plug_in.hardware.device().delayms(wait_ms);
        data = data.subspan(now.size());
    }
    return true;
}

}  // namespace tamrix::hw
