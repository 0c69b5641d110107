// The operations of a device object, listed once, in the order of its interface and of tamrix/hardware.h.
#pragma once

#include <cstdint>

/// Calls act(result, name, parameters, arguments) for each. From this list come the abstract device object, those in a
/// shared library and in a Windows installation, the check of a library's table, the simulator's own table and its
/// names for automation. A new operation is a line here, a function in tamrix/hardware.h, and what the simulator does
/// in sim/device.cpp.
// clang-format off
#define TAMRIX_DEVICE_OPERATIONS(act)                                                                                  \
    act(void, setvcc, (std::int32_t millivolts), (millivolts))                                                         \
    act(void, setvpp, (std::int32_t millivolts, std::uint8_t channel), (millivolts, channel)) /* channel 0 or 1 */     \
    act(void, gndpin, (std::uint8_t pin, std::uint8_t state), (pin, state)) /* 1 connects, 0 releases */               \
    act(void, vccpin, (std::uint8_t pin, std::uint8_t state), (pin, state))                                            \
    act(void, vpppin, (std::uint8_t pin, std::uint8_t state), (pin, state))                                            \
    act(void, busmode, (std::int32_t mode), (mode)) /* 0 normal pin work, 1 read-back */                               \
    act(void, hwinit, (), ())                                                                                          \
    /* Switches off all drivers and voltages. Returns 1 if the hardware does not answer. */                            \
    act(std::int32_t, hwreset, (), ())                                                                                 \
    act(std::int32_t, ctlout, (std::int32_t value, std::uint8_t address), (value, address))                            \
    act(std::int32_t, ctlin, (std::uint8_t address), (address))                                                        \
    act(void, regout, (std::int32_t value, std::uint8_t address), (value, address))                                    \
    act(std::int32_t, regin, (std::uint8_t address), (address))                                                        \
    act(void, delayms, (std::int32_t milliseconds), (milliseconds))                                                    \
    act(void, delayus, (std::int32_t count), (count))                                                                  \
    /* Waits for the reply to the frame just sent, which is then in `ibuf1`; false if none came. */                    \
    act(bool, replywait, (std::uint8_t count, std::uint8_t mode, std::int32_t extra), (count, mode, extra))            \
    /* The script of a vector run: each call adds a step, vecstart sends them. */                                       \
    act(void, vecout, (std::int32_t value, std::uint8_t address), (value, address))                                    \
    act(void, vecstart, (), ())                                                                                        \
    act(void, vecbyte, (std::uint8_t address), (address)) /* a read of a port, whose byte goes into the results */     \
    act(void, vecdelay, (std::int32_t count), (count))                                                                 \
    act(void, vecdelay2, (std::int32_t count), (count))                                                                \
    act(void, vecgnd, (std::uint8_t pin, std::uint8_t state), (pin, state))                                            \
    act(void, vecvcc, (std::uint8_t pin, std::uint8_t state), (pin, state))                                            \
    act(void, vecvpp, (std::uint8_t pin, std::uint8_t state), (pin, state))                                            \
    /* Waits for a bare acknowledge after a setup frame; 0 is then in `ibuf1(0)`. */                                   \
    act(void, replycheck, (std::int32_t count), (count))                                                               \
    act(void, hwrelease, (), ())                                                                                       \
    act(void, hwfault, (), ()) /* called at once when hwreset gave 1 */                                                \
    act(std::int32_t, boardsel, (std::uint8_t code), (code))                                                           \
    act(void, boardsel2, (std::uint8_t first, std::uint8_t second), (first, second)) /* on models from 40 */
// clang-format on

/// Declares one of them as an override.
#define TAMRIX_DEVICE_OVERRIDE(result, name, parameters, arguments) result name parameters override;
