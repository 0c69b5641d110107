// The device object of a programmer: power, pins and registers, in the order of its interface.
#pragma once

#include <cstdint>

namespace tamrix::hw {

/// Pins are socket positions, "pin codes": 1 is the lowest position of the left column, 101 that of the right one. A
/// failed call throws programmer_error.
class devobj {
public:
    virtual ~devobj() = default;

    virtual void setvcc(std::int32_t millivolts) = 0;
    virtual void setvpp(std::int32_t millivolts, std::uint8_t channel) = 0;  // channel 0 or 1
    virtual void gndpin(std::uint8_t pin, std::uint8_t state) = 0;           // 1 connects, 0 releases
    virtual void vccpin(std::uint8_t pin, std::uint8_t state) = 0;
    virtual void vpppin(std::uint8_t pin, std::uint8_t state) = 0;
    virtual void busmode(std::int32_t mode) = 0;  // 0 normal pin work, 1 read-back of the register test
    virtual void hwinit() = 0;
    /// Drops all drivers and voltages. Yields 1 where the hardware does not answer.
    virtual std::int32_t hwreset() = 0;
    virtual std::int32_t ctlout(std::int32_t value, std::uint8_t address) = 0;
    virtual std::int32_t ctlin(std::uint8_t address) = 0;
    virtual void regout(std::int32_t value, std::uint8_t address) = 0;
    virtual std::int32_t regin(std::uint8_t address) = 0;
    virtual void delayms(std::int32_t milliseconds) = 0;
    virtual void delayus(std::int32_t count) = 0;
    /// Waits for the reply to the frame just sent, which then stands in `ibuf1`; false where none came.
    virtual bool replywait(std::uint8_t count, std::uint8_t mode, std::int32_t extra) = 0;

    // The script of a vector run: entered act by act, handed to the hardware by vecstart.
    virtual void vecout(std::int32_t value, std::uint8_t address) = 0;
    virtual void vecstart() = 0;
    virtual void vecbyte(std::uint8_t address) = 0;  // a read of a port, whose byte goes into the result stream
    virtual void vecdelay(std::int32_t count) = 0;
    virtual void vecdelay2(std::int32_t count) = 0;
    virtual void vecgnd(std::uint8_t pin, std::uint8_t state) = 0;
    virtual void vecvcc(std::uint8_t pin, std::uint8_t state) = 0;
    virtual void vecvpp(std::uint8_t pin, std::uint8_t state) = 0;

    /// Waits for a bare acknowledge after a setup frame; 0 then stands in `ibuf1(0)`.
    virtual void replycheck(std::int32_t count) = 0;
    virtual void hwrelease() = 0;
    /// Called at once when hwreset gave 1.
    virtual void hwfault() = 0;
    virtual std::int32_t boardsel(std::uint8_t code) = 0;
    virtual void boardsel2(std::uint8_t first, std::uint8_t second) = 0;  // on models from 40
};

}  // namespace tamrix::hw
