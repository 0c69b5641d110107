// The command frames: their command bytes, their lengths, and a builder for each family.
#pragma once

#include "channel/pin_map.h"

#include <cstdint>

namespace tamrix {
class session;
}

namespace tamrix::hw {

/// Byte 0 of a frame.
inline constexpr std::uint8_t pin_command = 5, bulk_command = 10;

/// How many bytes of `ubuf1` are sent. It depends on who sends, not on the command alone.
enum class frame_length : std::int32_t {
    write_start_of_small_ram = 4,
    analyzer = 5,  // its start and stop
    bulk = 8,
    module_signal = 9,
    logic_pins = 13,
    self_test_pins = 15,  // and the signal generator
    large = 16,           // programmers with the larger memory or with modules
};

/// The byte that holds a module's number, 1 to 4, on programmers with modules.
inline constexpr std::int64_t slot_byte_of_bulk_frame = 8, slot_byte_of_pin_frame = 15;

/// Byte 2 of a bulk frame.
inline constexpr std::uint8_t bulk_to_ram = 128, bulk_from_ram = 64, bulk_end = 0;
/// Byte 1 of the bulk frame that opens a script and asks for its results.
inline constexpr std::uint8_t script_block = 16;

/// Sets all ports at once and makes the programmer read them back. Every builder changes only the bytes of `ubuf1` that
/// it names, sends the frame, and returns false if it was not taken, as `send` does.
bool send_pin_frame(session& plug_in, const port_bytes& outputs, const port_bytes& companions, frame_length length);

/// Announces a bulk transfer of a block, or ends the transfers.
bool send_bulk_frame(session& plug_in, std::uint8_t block, std::uint8_t direction, frame_length length);

/// Ends the transfers, whether they passed or failed.
bool end_bulk(session& plug_in, frame_length length);

/// Opens a script; after the script has started, asks for its results.
bool send_script_frame(session& plug_in);

}  // namespace tamrix::hw
