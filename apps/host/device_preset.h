// A device that a person can select: the values that its selection puts into the shared blocks.
#pragma once

#include "host/host_blocks.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::host {

/// What typeformat(1) holds: what a load does with the buffer first.
enum class clear_choice : std::uint8_t { fill_ff = 0, fill_00 = 1, none = 2 };

struct device_preset {
    std::string name{};                          // unique in a list; also what wtype(0) gets
    std::string maker{};                         // wcompany(0)
    std::string algorithm{};                     // algo(0)
    std::int32_t words = 0;                      // tlength(0); of a logic device its fuses
    std::uint8_t word_bytes = 1;                 // wordmode(0)
    std::uint8_t spare_units = 0;                // wordmode(1): 16-byte units after the main area
    std::int32_t buffer_bytes = 0;               // buflength(0); at least what the device needs
    std::int16_t pins = 0;                       // chippin(0)
    std::uint8_t vcc_pin = 0;                    // from 1; its code goes to bvccpin(0)
    std::uint8_t gnd_pin = 0;                    // from 1; its code goes to bgndpin(0)
    std::int16_t vcc_centivolts = 500;           // bvcc(0), 0.01 V
    std::int16_t vpp_centivolts = 0;             // bvpp(0), 0.01 V
    std::int16_t page_length = 0;                // pagelength(0): bytes a page; of a logic device fuses a row
    std::int32_t pulse_us = 100;                 // pwte(0): programming pulse in microseconds
    std::int16_t retries = 1;                    // wretry(0)
    std::uint8_t program_mode = 0;               // prgmode(0)
    std::uint8_t family = 0;                     // typeformat(0): 2 is the class of the vendor formats
    clear_choice clear = clear_choice::fill_ff;  // typeformat(1)
    std::uint8_t note = 0;                       // wwarnno(0): the argument of warn; 0 if there is no note
    std::int16_t vcc_high = 0;                   // bvcch(0): a count in some notes
    std::uint8_t option_0 = 0;                   // woption(0) to woption(3): the notes depend on them
    std::uint8_t option_1 = 0;
    std::uint8_t option_2 = 0;
    std::uint8_t option_3 = 0;

    bool operator==(const device_preset&) const = default;
};

/// Bytes that the main area and the spare units take in the buffer.
std::int64_t image_bytes(const device_preset& device);

/// The programmer's code of a supply pin, counted from 1, in a package of `pins` pins; 0 for no pin.
std::uint8_t pin_code(std::int64_t pin, std::int64_t pins);

/// Puts the device's values into the blocks. The caller creates the buffer: create_buffer(device.buffer_bytes) if that
/// changed.
void apply(const device_preset& device, host_blocks& blocks);

/// The device of that name; null if the list has none.
const device_preset* find_preset(std::span<const device_preset> list, std::string_view name);

/// `base` with `changes`: a device of the same name is replaced in its place, others follow at the end.
std::vector<device_preset> merge_presets(std::vector<device_preset> base, std::span<const device_preset> changes);

}  // namespace tamrix::host
