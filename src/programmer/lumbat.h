// The USB transport of a programmer, as every routine sees it.
#pragma once

#include <cstdint>

namespace tamrix::hw {

/// Memory of the host that a programmer uses; it lives as long as the programmer may run. An address may be null.
struct reply_memory {
    std::uint8_t* ibuf1 = nullptr;              // the reply to the last command frame, written at any time
    std::int32_t ibuf1_length = 0;              // in bytes
    std::int16_t* usbpip0readresult = nullptr;  // -1 after a reply that nobody asked for has been put into `ibuf1`
    const std::uint8_t* ubuf1 = nullptr;        // the command frame, from which ctlout takes a divider's upper bytes
    std::int32_t ubuf1_length = 0;              // in bytes
};

class lumbat {
public:
    virtual ~lumbat() = default;

    /// Sends a command frame of `length` bytes. Returns 1 on failure, any other value on success.
    virtual std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) = 0;
    /// Sends one block of `length` bytes. Returns 1 on failure, any other value on success.
    virtual std::int32_t usbbulkwrite(const std::uint8_t* buffer, std::int32_t length) = 0;
    /// Starts a read of `length` - 1 bytes and returns at once; the result is ignored. The read continues in a context
    /// of its own: it sets `*status` to 2 after the data have arrived, to more than 3 on failure, and at last writes
    /// the end marker 170 to the last byte of `buffer`. Both addresses stay valid until then.
    virtual std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) = 0;
};

}  // namespace tamrix::hw
