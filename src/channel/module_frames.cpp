#include "channel/module_frames.h"

#include "channel/send.h"
#include "session/session.h"

#include <array>

namespace tamrix::hw {

namespace {

constexpr std::uint8_t control_mark = 170, signal_mark = 54;

/// Sets the first bytes of a frame; the others stay as they are.
template <std::size_t Count>
void set_bytes(session& plug_in, const std::array<std::uint8_t, Count>& bytes)
{
    for (std::size_t i = 0; i < Count; ++i) plug_in.blocks.ubuf1(static_cast<std::int64_t>(i)) = bytes[i];
}

bool send_control(session& plug_in, std::uint8_t command, std::uint8_t slot)
{
    set_bytes(plug_in, std::array<std::uint8_t, 3>{command, control_mark, slot});
    return send(plug_in, frame_length::self_test_pins);
}

}  // namespace

bool send_module_reset(session& plug_in, std::uint8_t slot)
{
    return send_control(plug_in, module_reset_command, slot);
}

bool send_module_start(session& plug_in, std::uint8_t slot)
{
    return send_control(plug_in, module_start_command, slot);
}

bool send_module_bulk_frame(session& plug_in, const module_bulk& bulk)
{
    plug_in.blocks.ubuf1(3) = static_cast<std::uint8_t>(bulk.memory);
    plug_in.blocks.ubuf1(stage_byte_of_bulk_frame) = static_cast<std::uint8_t>(bulk.stage);
    plug_in.blocks.ubuf1(slot_byte_of_bulk_frame) = bulk.slot;
    return send_bulk_frame(plug_in, bulk.block, bulk.direction, bulk.length);
}

bool send_load_step(session& plug_in, load_direction direction, std::int32_t bytes)
{
    const auto byte = [bytes](int shift) { return static_cast<std::uint8_t>(bytes >> shift); };
    set_bytes(plug_in, std::array<std::uint8_t, 5>{load_step_command, static_cast<std::uint8_t>(direction), byte(16),
                                                   byte(8), byte(0)});
    return send(plug_in, frame_length::large);
}

bool send_module_signal(session& plug_in, std::uint8_t slot, bool passed)
{
    using bytes = std::array<std::uint8_t, 6>;
    set_bytes(plug_in, passed ? bytes{module_signal_command, 1, signal_mark, 6, 80, 1}
                              : bytes{module_signal_command, 2, signal_mark, 1, 250, 1});
    plug_in.blocks.ubuf1(slot_byte_of_bulk_frame) = slot;
    return send(plug_in, frame_length::module_signal);
}

}  // namespace tamrix::hw
