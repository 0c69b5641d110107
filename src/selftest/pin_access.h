// The lines of the socket as a stage drives, reads and draws them.
#pragma once

#include "channel/frames.h"
#include "selftest/selftest_frame.h"

#include <cstdint>
#include <span>

namespace tamrix {

class socket_frame;

/// How the pin frames of a form go out, and which lamp shows a line. The lines are numbered 0 to 47 as lamps are.
struct pin_access {
    hw::frame_length length = hw::frame_length::self_test_pins;
    std::uint8_t slot = 0;                         // the module's number, in byte 15; 0: none is sent
    std::span<const std::uint8_t> lamp_of_line{};  // of the lines 4 to 43; empty: a line's lamp has its number
};

/// -1 for a line without a lamp.
int lamp_of(const pin_access& access, int line);

/// The place of a pin in a fault: its number on the socket, 0 where it has none, with port and bit.
selftest_fault fault_at(const socket_frame& form, const pin_access& access, selftest_stage stage, int line);

/// Sends a pin frame. False where it was refused.
bool send_pins(const socket_frame& form, const pin_access& access, const hw::port_bytes& outputs,
               const hw::port_bytes& masks);

/// Reads the first `count` ports; by USB the reply to the last frame is waited for. False where none came.
bool read_pins(const socket_frame& form, int count, hw::port_bytes& pins);

/// The ports that pin tests look at: the outermost one on some programmers only.
int checked_ports(const socket_frame& form);

/// Why pins of the outermost port are not looked at, and how many these are.
inline constexpr const char* not_read_by_generation = "only generation 17 reads the outermost port";
inline constexpr int unread_pins = 8;
/// The register that pulls the inputs, to the opposite level.
inline constexpr std::uint8_t level_switch = 50;

/// All ports alike.
constexpr hw::port_bytes all_ports(std::uint8_t value) { return {value, value, value, value, value, value}; }

}  // namespace tamrix
