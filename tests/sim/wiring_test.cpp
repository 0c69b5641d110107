#include "sim/wiring.h"

#include "sim/bench.h"

#include <gtest/gtest.h>

#include <set>

namespace tamrix::tests {

namespace {

/// The bit that reaches a pin, looked up backwards.
port_bit bit_of_pin(const sim::wiring& wires, int pin, int pins)
{
    for (std::size_t port = 0; port < 6; ++port) {
        for (int bit = 0; bit < 8; ++bit) {
            if (wires.contact_of_bit(static_cast<int>(port), bit) == wires.contact_of_pin(pin, pins))
                return {port, bit};
        }
    }
    return {99, 99};
}

TEST(wiring, a_part_of_14_pins_sits_at_the_bottom_of_48_contacts)
{
    const sim::wiring wires{40};
    EXPECT_EQ(bit_of_pin(wires, 6, 14), (port_bit{0, 3}));
    EXPECT_EQ(bit_of_pin(wires, 7, 14), (port_bit{0, 4}));
    EXPECT_EQ(bit_of_pin(wires, 0, 14), (port_bit{1, 1}));
    EXPECT_EQ(bit_of_pin(wires, 13, 14), (port_bit{1, 6}));
}

TEST(wiring, pins_of_every_package_have_their_bits_on_48_contacts)
{
    const sim::wiring wires{50};
    for (int pins = 2; pins <= 48; pins += 2) {
        for (int pin = 0; pin < pins; ++pin) {
            EXPECT_EQ(bit_of_pin(wires, pin, pins),
                      place_of(static_cast<std::size_t>(pin), static_cast<std::size_t>(pins / 2)));
        }
    }
}

TEST(wiring, a_pin_in_40_contacts_hangs_where_the_permuted_row_has_its_letter)
{
    for (const int model : {22, 23, 24, 28, 29}) {
        const sim::wiring wires{model};
        for (int pins = 2; pins <= 40; pins += 2) {
            std::string row;
            for (int pin = 0; pin < pins; ++pin) row += static_cast<char>(pin + 1);
            const std::string text = socket40_text(row);
            ASSERT_EQ(text.size(), 40u);
            for (int pin = 0; pin < pins; ++pin)
                EXPECT_EQ(bit_of_pin(wires, pin, pins), place_of(text.find(static_cast<char>(pin + 1)), 20));
        }
    }
}

TEST(wiring, each_of_40_contacts_has_one_driver_and_the_sixth_port_none)
{
    const sim::wiring wires{23};
    std::set<int> reached;
    for (int port = 0; port < 5; ++port) {
        for (int bit = 0; bit < 8; ++bit) reached.insert(wires.contact_of_bit(port, bit).value());
    }
    EXPECT_EQ(reached.size(), 40u);
    for (int bit = 0; bit < 8; ++bit) EXPECT_FALSE(wires.contact_of_bit(5, bit).has_value());
}

TEST(wiring, pin_codes_count_from_the_bottom_of_each_column)
{
    const sim::wiring wires{40};
    const auto code_of = [&](int pin, int pins) { return wires.code_of_contact(wires.contact_of_pin(pin - 1, pins)); };
    EXPECT_EQ(code_of(1, 20), 10);
    EXPECT_EQ(code_of(10, 20), 1);
    EXPECT_EQ(code_of(11, 20), 101);
    EXPECT_EQ(code_of(20, 20), 110);
}

TEST(wiring, codes_that_no_contact_has_lead_nowhere)
{
    const sim::wiring large{40}, small{28};
    for (const int code : {-1, 0, 25, 100, 125, 255}) EXPECT_FALSE(large.contact_of_code(code)) << code;
    EXPECT_TRUE(large.contact_of_code(24));
    EXPECT_TRUE(large.contact_of_code(124));
    for (const int code : {21, 121}) EXPECT_FALSE(small.contact_of_code(code)) << code;
    EXPECT_TRUE(small.contact_of_code(20));
    EXPECT_TRUE(small.contact_of_code(120));
}

TEST(wiring, pins_count_as_on_the_socket_which_has_40_on_six_models)
{
    for (const int model : {22, 23, 24, 27, 28, 29}) {
        const sim::wiring wires{model};
        EXPECT_EQ(wires.contact_of_socket_pin(20), wires.contact_of_code(1)) << model;
        EXPECT_EQ(wires.contact_of_socket_pin(1), wires.contact_of_code(20));
        EXPECT_EQ(wires.contact_of_socket_pin(40), wires.contact_of_code(120));
        EXPECT_FALSE(wires.contact_of_socket_pin(41));
    }
    const sim::wiring wires{9};
    EXPECT_EQ(wires.contact_of_socket_pin(24), wires.contact_of_code(1));
    for (const int none : {-1, 0, 49}) EXPECT_FALSE(wires.contact_of_socket_pin(none));
    for (int pin = 1; pin <= 48; ++pin) EXPECT_EQ(wires.socket_pin_of(*wires.contact_of_socket_pin(pin)), pin);
    EXPECT_FALSE(sim::wiring{27}.socket_pin_of(20)) << "above the socket";
}

TEST(wiring, contacts_above_a_part_have_no_pin)
{
    const sim::wiring wires{40};
    EXPECT_EQ(wires.pin_at(wires.contact_of_pin(3, 14), 14), 3);
    EXPECT_EQ(wires.pin_at(wires.contact_of_pin(12, 14), 14), 12);
    EXPECT_FALSE(wires.pin_at(7, 14));
    EXPECT_FALSE(wires.pin_at(24 + 7, 14));
}

}  // namespace
}  // namespace tamrix::tests
