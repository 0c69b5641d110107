#include "sim/wiring.h"

#include <array>

namespace tamrix::sim {

namespace {

/// The socket of 40 contacts is wired in another order. Entry `k` is the contact on the `k`-th driver of a column,
/// `a` and `b` being the left and right column of the socket.
constexpr int a(int row) { return row; }
constexpr int b(int row) { return 20 + row; }
constexpr std::array<int, 20> left_drivers{b(0), a(1),  a(2),  a(3),  a(7),  a(6),  a(5),  a(4),  b(8),  b(6),
                                           b(9), b(10), b(14), a(15), b(13), a(14), a(16), a(17), a(18), a(19)};
constexpr std::array<int, 20> right_drivers{b(1),  b(2),  b(3), b(4), a(8),  a(9), a(10), a(11), a(12), b(11),
                                            b(12), a(13), b(5), b(7), b(15), a(0), b(16), b(17), b(18), b(19)};

}  // namespace

wiring::wiring(int model) : rows_{24}, socket_pins_{48}
{
    if (model == 22 || model == 23 || model == 24 || model == 28 || model == 29) rows_ = 20;
    if (rows_ == 20 || model == 27) socket_pins_ = 40;
}

std::optional<int> wiring::contact_of_socket_pin(int number) const
{
    if (number < 1 || number > socket_pins_) return std::nullopt;
    return contact_of_pin(number - 1, socket_pins_);
}

std::optional<int> wiring::socket_pin_of(int contact) const
{
    const auto pin = pin_at(contact, socket_pins_);
    if (!pin) return std::nullopt;
    return *pin + 1;
}

std::optional<int> wiring::contact_of_bit(int port, int bit) const
{
    // Bit 3 is the lowest of a port's four left contacts, bit 4 that of its right ones.
    const bool right = bit >= 4;
    const int driver = 4 * port + (right ? bit - 4 : 3 - bit);
    if (driver >= rows_) return std::nullopt;
    if (can_only_pull_low()) return (right ? right_drivers : left_drivers)[static_cast<std::size_t>(driver)];
    return right ? rows_ + driver : driver;
}

std::optional<int> wiring::contact_of_code(int code) const
{
    if (code >= 1 && code <= rows_) return code - 1;
    if (code >= 101 && code <= 100 + rows_) return rows_ + code - 101;
    return std::nullopt;
}

int wiring::code_of_contact(int contact) const { return contact < rows_ ? contact + 1 : contact - rows_ + 101; }

int wiring::contact_of_pin(int pin, int pins) const
{
    const int half = pins / 2;
    return pin < half ? half - 1 - pin : rows_ + pin - half;
}

std::optional<int> wiring::pin_at(int contact, int pins) const
{
    const int half = pins / 2, row = contact < rows_ ? contact : contact - rows_;
    if (row >= half) return std::nullopt;
    return contact < rows_ ? half - 1 - row : half + row;
}

}  // namespace tamrix::sim
