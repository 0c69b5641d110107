#include "selftest/ram_test.h"

#include "base/other_side.h"
#include "channel/bulk_read.h"
#include "channel/bulk_write.h"
#include "channel/send.h"
#include "session/session.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr std::uint8_t ram_size_command = 9;
constexpr std::int32_t large_write_bytes = 65536, length_without_ram = 256;
constexpr int blocks_of_small_ram = 4, blocks_of_large_ram = 16;

/// Asks for the larger RAM, or for the smaller one; true where the programmer has what was asked for.
bool ask_for_ram(const selftest_frame& form, bool large)
{
    auto& blocks = form.plug_in().blocks;
    blocks.ubuf1(0) = ram_size_command;
    blocks.ubuf1(1) = large ? 1 : 0;
    if (large) blocks.ubuf1(7) = 0;
    hw::write_other_side(blocks.ibuf1(0), 0);
    if (!hw::send(form.plug_in(), hw::frame_length::large)) return false;
    form.device().replycheck(3);
    return hw::read_other_side(blocks.ibuf1(0)) > 0;
}

}  // namespace

std::vector<std::uint8_t> random_bytes(selftest_frame& form, std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t& byte : bytes) byte = form.random_byte();
    return bytes;
}

bool block_is_good(selftest_frame& form, int block, std::span<const std::uint8_t> expected, int slot)
{
    const auto read = form.plug_in().blocks.ibuf2.span();
    const auto differs = std::mismatch(expected.begin(), expected.end(), read.begin(), read.end());
    if (differs.first == expected.end()) return true;
    form.add(selftest_fault{.stage = selftest_stage::ram,
                            .place = block,
                            .slot = slot,
                            .expected = *differs.first,
                            .read = *differs.second});
    return false;
}

int count_good_blocks(selftest_frame& form, std::span<const std::uint8_t> written, hw::frame_length frame)
{
    int good = 0;
    for (int block = 0; !written.empty() && !form.closed(); ++block) {
        const auto now = written.first(std::min<std::size_t>(written.size(), ram_block_bytes));
        const auto bytes = static_cast<std::int32_t>(now.size());
        if (!hw::read_block(form.plug_in(), static_cast<std::uint8_t>(block), bytes, frame)) {
            form.add(selftest_fault{.stage = selftest_stage::ram, .place = block});
            break;
        }
        if (block_is_good(form, block, now)) ++good;
        written = written.subspan(now.size());
    }
    return good;
}

int test_small_ram(selftest_frame& form)
{
    session& plug_in = form.plug_in();
    form.device().delayms(200);
    const bool taken = hw::send_bulk_frame(plug_in, 0, hw::bulk_to_ram, hw::frame_length::write_start_of_small_ram);
    form.device().delayms(200);
    const std::vector<std::uint8_t> bytes = random_bytes(form, 131089);
    const std::span<const std::uint8_t> written =
        std::span{bytes}.first(std::size_t{blocks_of_small_ram} * ram_block_bytes);
    if (taken) hw::write_blocks(plug_in, written, ram_block_bytes);
    const int good = count_good_blocks(form, written, hw::frame_length::bulk);
    hw::end_bulk(plug_in, hw::frame_length::bulk);
    return good;
}

int test_large_ram(selftest_frame& form)
{
    session& plug_in = form.plug_in();
    const std::vector<std::uint8_t> bytes = random_bytes(form, 524305);
    const bool large = ask_for_ram(form, true);
    if (large) {
        plug_in.blocks.ubuf1(3) = 1;
    } else {
        ask_for_ram(form, false);
    }
    const int blocks = large ? blocks_of_large_ram : 1;
    const auto written = std::span<const std::uint8_t>{bytes}.first(static_cast<std::size_t>(blocks) * ram_block_bytes);
    if (hw::begin_bulk_write(plug_in, 0, hw::frame_length::large, 20))
        hw::write_blocks(plug_in, written, large ? large_write_bytes : ram_block_bytes);
    const int good = count_good_blocks(form, written, hw::frame_length::large);
    hw::end_bulk(plug_in, hw::frame_length::large);
    return good;
}

/// Intentional: without a good block the length is 256 bytes, which the instruments can still work with.
void keep_ram_level(const selftest_frame& form, int good_blocks, std::int32_t block_bytes)
{
    auto& blocks = form.plug_in().blocks;
    blocks.rambknum(0) = static_cast<std::uint8_t>(good_blocks);
    blocks.ramlg(0) = good_blocks == 0 ? length_without_ram : good_blocks * block_bytes;
}

}  // namespace tamrix
