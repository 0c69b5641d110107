// How the pins of a part in the socket reach the programmer: contacts, pin codes, and the bits of the six ports.
#pragma once

#include <cstdint>
#include <optional>

namespace tamrix::sim {

/// Each contact of the socket has an index: the left column from its lowest contact up, then the right column likewise.
/// A part sits at the socket's bottom.
class wiring {
public:
    /// Models 22, 23, 24, 28 and 29 have 40 contacts, all others 48.
    explicit wiring(int model);

    int rows() const { return rows_; }
    int contacts() const { return 2 * rows_; }
    /// True if each port has one byte only: 1 releases the contact, 0 drives it low. Else a data and a mask byte.
    bool can_only_pull_low() const { return rows_ == 20; }
    /// Pins of the socket as they are numbered on it: 40 on those models and on 27, whose lowest 40 contacts they are.
    int socket_pins() const { return socket_pins_; }
    /// The contact at such a pin, counted from 1, and the other way round.
    std::optional<int> contact_of_socket_pin(int number) const;
    std::optional<int> socket_pin_of(int contact) const;

    /// The contact at a bit of a port; none if the bit is not connected.
    std::optional<int> contact_of_bit(int port, int bit) const;
    /// 1 is the left column's lowest contact, 101 that of the right one. None for any other number.
    std::optional<int> contact_of_code(int code) const;
    int code_of_contact(int contact) const;
    /// Pin and result counted from 0.
    int contact_of_pin(int pin, int pins) const;
    /// None if a part of `pins` pins has no pin there.
    std::optional<int> pin_at(int contact, int pins) const;

private:
    int rows_;
    int socket_pins_;
};

}  // namespace tamrix::sim
