#include "ttl/run/resultwait.h"

#include "base/other_side.h"
#include "channel/bulk.h"
#include "channel/send.h"
#include "session/session.h"

namespace tamrix {

namespace {

constexpr double limit_ms = 4000;
constexpr std::int32_t short_block = 65;

struct target {
    std::uint8_t* bytes;
    std::int32_t length;
};

target target_of(session& plug_in, int pipe, std::int32_t offset, std::int32_t length)
{
    if (pipe == 0) {
        std::uint8_t& first = plug_in.blocks.ibuffer(offset);
        std::uint8_t& last = plug_in.blocks.ibuffer(std::int64_t{offset} + length - 1);
        plug_in.blocks.ibuf1(0) = last;
        hw::write_other_side(last, 0);
        return {&first, length};
    }
    const std::int32_t bytes = pipe == 2 || pipe == 5 ? short_block : length;
    auto& ibuf2 = plug_in.blocks.ibuf2;
    hw::write_other_side(ibuf2(bytes - 1), 0);
    return {&ibuf2(0), bytes};
}

}  // namespace

int resultwait(session& plug_in, int pipe, std::int32_t offset, std::int32_t length)
{
    std::uint8_t& progress = plug_in.blocks.usbpip2readresult(0);
    std::uint8_t& prgresult = plug_in.blocks.prgresult(0);
    hw::write_other_side(progress, 0);
    const target into = target_of(plug_in, pipe, offset, length);
    plug_in.hardware.transport().usbbulkread(into.bytes, into.length, &progress);
    hw::watchdog limit{plug_in.screen, prgresult, limit_ms};
    if (hw::wait_for_data(plug_in, limit)) return 0;
    hw::write_other_side(prgresult, hw::prgresult_timed_out);
    return 1;
}

}  // namespace tamrix
