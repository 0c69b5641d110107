#include "channel/bulk.h"

#include "base/errors.h"
#include "base/other_side.h"
#include "channel/send.h"
#include "session/session.h"

#include <algorithm>

namespace tamrix::hw {

namespace {

/// What `usbpip2readresult(0)` tells of a running read.
constexpr std::uint8_t data_arrived = 2, last_good_result = 3;

void bulk_frame_of(session& plug_in, std::uint8_t block, std::uint8_t direction)
{
    auto& frame = plug_in.blocks.ubuf1;
    frame(0) = 10;
    frame(1) = block;
    frame(2) = direction;
}

bool wait_for_marker(const std::uint8_t& marker, watchdog& limit)
{
    for (;;) {
        limit.pump();
        if (limit.timed_out()) return false;
        if (read_other_side(marker) == end_marker) return true;
    }
}

}  // namespace

bool wait_for_data(session& plug_in, watchdog& limit)
{
    const std::uint8_t& progress = plug_in.blocks.usbpip2readresult(0);
    for (;;) {
        limit.pump();
        const std::uint8_t now = read_other_side(progress);
        if (now > last_good_result || limit.timed_out()) return false;
        if (now == data_arrived) return true;
    }
}

bool read_block(session& plug_in, std::uint8_t block, std::int32_t block_bytes, bulk_frame frame)
{
    auto& ibuf2 = plug_in.blocks.ibuf2;
    std::uint8_t& marker = ibuf2(block_bytes);
    bulk_frame_of(plug_in, block, bulk_from_ram);
    if (!send(plug_in, static_cast<std::int32_t>(frame))) return false;

    std::uint8_t& progress = plug_in.blocks.usbpip2readresult(0);
    write_other_side(progress, 0);
    write_other_side(marker, 0);
    plug_in.hardware.transport().usbbulkread(&ibuf2(0), block_bytes + 1, &progress);
    watchdog limit{plug_in.screen, plug_in.blocks.prgresult(0), bulk_read_limit_ms};
    return wait_for_data(plug_in, limit) && wait_for_marker(marker, limit);
}

bool write_blocks(session& plug_in, std::span<const std::uint8_t> data, std::int32_t block_bytes, bulk_frame frame,
                  std::int32_t wait_ms)
{
    if (block_bytes <= 0) throw subscript_error{"a bulk block of " + std::to_string(block_bytes) + " bytes"};
    bulk_frame_of(plug_in, 0, bulk_to_ram);
    if (!send(plug_in, static_cast<std::int32_t>(frame))) return false;
    plug_in.hardware.device().delayms(wait_ms);
    while (!data.empty()) {
        const auto now = data.first(std::min<std::size_t>(data.size(), static_cast<std::size_t>(block_bytes)));
        const std::int32_t result =
            plug_in.hardware.transport().usbbulkwrite(now.data(), static_cast<std::int32_t>(now.size()));
        write_other_side(plug_in.blocks.prgresult(0), static_cast<std::uint8_t>(result));
        if (result == prgresult_write_failed) return false;
        data = data.subspan(now.size());
    }
    return true;
}

bool end_bulk(session& plug_in, bulk_frame frame)
{
    bulk_frame_of(plug_in, 0, bulk_end);
    return send(plug_in, static_cast<std::int32_t>(frame));
}

}  // namespace tamrix::hw
