// The USB transport of a programmer, as every routine sees it.
#pragma once

#include <cstdint>

namespace tamrix::hw {

/// Memory of the host that a programmer uses; it lives as long as the programmer may run. An address may be null.
struct reply_memory {
    std::uint8_t* ibuf1 = nullptr;  // the reply to the last command frame, put there behind the caller's back
    std::int32_t ibuf1_length = 0;  // in bytes
    std::int16_t* usbpip0readresult = nullptr;  // -1 after a reply that nobody asked for has been put into `ibuf1`
    const std::uint8_t* ubuf1 = nullptr;        // the command frame, from which ctlout takes a divider's upper bytes
    std::int32_t ubuf1_length = 0;              // in bytes
};

class lumbat {
public:
    virtual ~lumbat() = default;

    /// Sends a command frame. Yields 1 on failure; any other value is not one.
    virtual std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) = 0;
    /// Sends one block of data. Yields 1 on failure.
    virtual std::int32_t usbbulkwrite(const std::uint8_t* buffer, std::int32_t length) = 0;
    /// Starts a read of `length` bytes and returns at once; the result does not count. The read runs on in a context of
    /// its own:
    /// `*status` becomes 2 when the data have arrived and more than 3 on failure, and the end marker 170 is written to
    /// the last byte, behind the data, after both. Both must stay valid until then.
    virtual std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) = 0;
};

}  // namespace tamrix::hw
