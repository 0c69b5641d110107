// The USB transport of a programmer, as every routine sees it.
#pragma once

#include <cstdint>

namespace tamrix::hw {

/// Memory that a transport fills behind the caller's back; it lives as long as the transport may run.
struct reply_memory {
    std::uint8_t* ibuf1;        // the reply to the last command frame
    std::int32_t ibuf1_length;  // in bytes
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
