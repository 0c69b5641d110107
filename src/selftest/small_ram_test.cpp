#include "selftest/small_ram_test.h"

#include "channel/bulk_write.h"
#include "channel/send.h"
#include "selftest/ram_test.h"
#include "session/session.h"

namespace tamrix {

namespace {

constexpr std::uint8_t two_blocks_command = 51;
constexpr std::size_t two_blocks_bytes = 57344;

/// Byte 2, the direction, is left as `ubuf1` has it.
bool send_two_blocks_frame(session& plug_in, hw::frame_length length)
{
    plug_in.blocks.ubuf1(0) = two_blocks_command;
    plug_in.blocks.ubuf1(1) = 1;
    return hw::send(plug_in, length);
}

bool begin_two_blocks_write(session& plug_in)
{
    plug_in.blocks.ubuf1(2) = hw::bulk_to_ram;
    return send_two_blocks_frame(plug_in, hw::frame_length::write_start_of_small_ram);
}

}  // namespace

int test_little_ram(selftest_frame& form)
{
    session& plug_in = form.plug_in();
    const bool taken = hw::send_bulk_frame(plug_in, 0, hw::bulk_to_ram, hw::frame_length::write_start_of_small_ram);
    form.device().delayms(20);
    const std::vector<std::uint8_t> bytes = random_bytes(form, 4113);
    const auto written = std::span{bytes}.first(little_ram_bytes);
    if (taken) hw::write_blocks(plug_in, written, little_ram_bytes);
    const int good = count_good_blocks(form, written, hw::frame_length::bulk);
    hw::end_bulk(plug_in, hw::frame_length::bulk);
    return good;
}

int test_ram_of_two_blocks(selftest_frame& form)
{
    session& plug_in = form.plug_in();
    form.device().delayms(200);
    const bool taken = begin_two_blocks_write(plug_in);
    form.device().delayms(200);
    const std::vector<std::uint8_t> bytes = random_bytes(form, 65537);
    const auto written = std::span{bytes}.first(two_blocks_bytes);
    if (taken) hw::write_blocks(plug_in, written, two_blocks_bytes);
    send_two_blocks_frame(plug_in, hw::frame_length::bulk);
    const int good = count_good_blocks(form, written, hw::frame_length::bulk);
    hw::end_bulk(plug_in, hw::frame_length::bulk);
    return good == 2 ? 1 : 0;
}

}  // namespace tamrix
