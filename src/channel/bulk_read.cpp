#include "channel/bulk_read.h"

#include "base/other_side.h"
#include "channel/watchdog.h"
#include "session/session.h"

namespace tamrix::hw {

namespace {

/// What `usbpip2readresult(0)` says of a running read.
constexpr std::uint8_t data_arrived = 2, last_good_result = 3;

bool wait_for_data(const std::uint8_t& progress, watchdog& limit)
{
    for (;;) {
        limit.pump();
        const std::uint8_t now = read_other_side(progress);
        if (now > last_good_result || limit.timed_out()) return false;
        if (now == data_arrived) return true;
    }
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

bool await_block(session& plug_in, const awaited_block& awaited)
{
    std::uint8_t& progress = plug_in.blocks.usbpip2readresult(0);
    std::uint8_t& last = awaited.target.back();
    write_other_side(progress, 0);
    write_other_side(last, 0);
    plug_in.hardware.transport().usbbulkread(awaited.target.data(), static_cast<std::int32_t>(awaited.target.size()),
                                             &progress);
    watchdog limit{plug_in.screen, plug_in.blocks.prgresult(0), awaited.limit_ms};
    return wait_for_data(progress, limit) && (awaited.end == block_end::data || wait_for_marker(last, limit));
}

std::span<std::uint8_t> in_ibuf2(session& plug_in, std::int32_t bytes)
{
    auto& ibuf2 = plug_in.blocks.ibuf2;
    (void)ibuf2(std::int64_t{bytes} - 1);  // there are as many
    return ibuf2.span().first(static_cast<std::size_t>(bytes));
}

bool read_block(session& plug_in, std::uint8_t block, std::int32_t block_bytes, frame_length frame)
{
    const auto target = in_ibuf2(plug_in, block_bytes + 1);
    return send_bulk_frame(plug_in, block, bulk_from_ram, frame) &&
           await_block(plug_in, {.target = target, .limit_ms = bulk_read_limit_ms, .end = block_end::marker});
}

}  // namespace tamrix::hw
