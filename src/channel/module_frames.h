// The frames that only programmers with modules know: each names its module, 1 to 4.
#pragma once

#include "channel/frames.h"

#include <cstdint>

namespace tamrix::hw {

/// Byte 0 of a frame.
inline constexpr std::uint8_t module_reset_command = 4, module_start_command = 236, load_step_command = 92,
                              module_signal_command = 6;

/// A module is reset, and started from its own configuration. These builders too return false where the frame was not
/// taken.
bool send_module_reset(session& plug_in, std::uint8_t slot);
bool send_module_start(session& plug_in, std::uint8_t slot);

/// Byte 3 of a bulk frame: what the bytes are for.
enum class module_memory : std::uint8_t { ram = 1, image = 3 };
/// Byte 4: where they are, in the unit, or on their way between it and the module. The latter waits for a load step.
enum class module_stage : std::uint8_t { unit = 0, passing = 170 };
inline constexpr std::int64_t stage_byte_of_bulk_frame = 4;

/// A bulk frame of a module.
struct module_bulk {
    std::uint8_t block, direction;
    module_memory memory;
    module_stage stage;
    std::uint8_t slot;
    frame_length length;
};
bool send_module_bulk_frame(session& plug_in, const module_bulk& bulk);

enum class load_direction : std::uint8_t { to_module = 0, from_module = 1 };
/// Tells the module what to do with the block of the frame before. `bytes` is 0 to 65536.
bool send_load_step(session& plug_in, load_direction direction, std::int32_t bytes);

/// Lets a module show what its output test came to.
bool send_module_signal(session& plug_in, std::uint8_t slot, bool passed);

}  // namespace tamrix::hw
