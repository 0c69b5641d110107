// The six ports of the socket, driven and read by frames or by registers, whichever the route is.
#pragma once

#include "channel/frames.h"

namespace tamrix::hw {

/// Where the device object has a port's data, which are its pins when read, and its mask, where 1 releases a pin.
constexpr std::uint8_t data_register(std::size_t port) { return static_cast<std::uint8_t>(2 * port); }
constexpr std::uint8_t mask_register(std::size_t port) { return static_cast<std::uint8_t>(2 * port + 1); }

/// Releases all pins of all ports, as data and as masks.
inline constexpr port_bytes released_ports{255, 255, 255, 255, 255, 255};

/// All calls return false if the programmer did not take or answer a frame.
class ports {
public:
    enum class route : std::uint8_t { frames, registers };

    /// `length` is that of the frames.
    ports(session& plug_in, route by, frame_length length) : plug_in_{plug_in}, by_{by}, length_{length} {}

    bool by_frames() const { return by_ == route::frames; }

    bool drive(const port_bytes& data, const port_bytes& masks);
    /// Other data under the masks of the last drive(). A frame repeats the masks, registers keep them.
    bool drive_data(const port_bytes& data);
    bool release();
    /// Reads the levels of the socket's pins. By frames, it waits for the reply, which has the levels of the last
    /// frame.
    bool read(port_bytes& pins);

private:
    session& plug_in_;
    route by_;
    frame_length length_;
    port_bytes masks_{};
};

}  // namespace tamrix::hw
