#include "sim/bench.h"
#include "sim/test_board.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace tamrix::tests {

namespace {

constexpr int wired_models[] = {40, 9, 22, 23, 24, 28, 29};

TEST(socket, a_gate_answers_on_every_kind_of_pin_electronics_and_on_both_routes)
{
    for (const int model : wired_models) {
        for (const bool by_frame : {true, false}) {
            bench b{model};
            b.programmer.insert(std::make_unique<quad_nand>());
            b.power(1, 107, 1);
            EXPECT_EQ(b.run("00X01XGX10X11V", by_frame), "LLHLHHLHHLLHHH") << model;
            EXPECT_EQ(b.run("11X10XGX11X00V", by_frame), "HHLHLHLLHHHLLH") << model;
            b.power(1, 107, 0);
            EXPECT_TRUE(b.hazards().empty());
        }
    }
}

TEST(socket, wires_of_every_package_carry_what_is_driven)
{
    std::mt19937 random{7};
    for (const int model : wired_models) {
        for (std::size_t pins = 8; pins <= 40; pins += 2) {
            bench b{model};
            b.programmer.insert(std::make_unique<one_way_wires>(static_cast<int>(pins)));
            for (int round = 0; round < 20; ++round) {
                std::string row(pins, 'X'), expected(pins, 'H');
                for (std::size_t pin = 0; pin < pins / 2; ++pin) {
                    const bool high = random() % 2 != 0;
                    row[pin] = high ? '1' : '0';
                    expected[pin] = expected[pins - 1 - pin] = high ? 'H' : 'L';
                }
                EXPECT_EQ(b.run(row, true), expected) << model << ' ' << pins;
                EXPECT_EQ(b.run(row, false), expected) << model << ' ' << pins;
            }
            EXPECT_TRUE(b.hazards().empty());
        }
    }
}

TEST(socket, a_part_of_48_pins_fills_the_large_socket)
{
    bench b{40};
    b.programmer.insert(std::make_unique<one_way_wires>(48));
    const std::string row = std::string(23, '0') + '1' + std::string(24, 'X');
    EXPECT_EQ(b.run(row), std::string(23, 'L') + "HH" + std::string(23, 'L'));
}

TEST(socket, a_part_that_does_not_fit_is_refused_and_the_old_one_stays)
{
    bench small{23}, large{40};
    small.programmer.insert(std::make_unique<one_way_wires>(8));
    EXPECT_THROW(small.programmer.insert(std::make_unique<one_way_wires>(42)), std::invalid_argument);
    EXPECT_EQ(small.run("01XXXXXX"), "LHHHHHHL");
    EXPECT_THROW(large.programmer.insert(std::make_unique<one_way_wires>(50)), std::invalid_argument);
    EXPECT_THROW(large.programmer.insert(std::make_unique<one_way_wires>(7)), std::invalid_argument);
    EXPECT_THROW(large.programmer.insert(std::make_unique<one_way_wires>(0)), std::invalid_argument);
}

TEST(socket, released_contacts_of_an_empty_socket_read_high_and_driven_ones_as_driven)
{
    for (const int model : wired_models) {
        bench b{model};
        EXPECT_EQ(b.run("X0X1XX0X"), "HLHHHHLH") << model;
    }
}

TEST(socket, supply_pins_read_the_level_of_their_supply)
{
    bench b{40};
    b.programmer.insert(std::make_unique<quad_nand>());
    EXPECT_EQ(b.run("XXXXXXXXXXXXXX"), "HHHHHHHHHHHHHH");
    b.power(1, 107, 1);
    EXPECT_EQ(b.run("XXXXXXXXXXXXXX"), "HHLHHLLLHHLHHH");
}

TEST(socket, a_part_works_only_while_both_its_supply_pins_are_connected_and_the_generator_is_on)
{
    bench b{40};
    auto owned = std::make_unique<quad_nand>();
    quad_nand& part = *owned;
    b.programmer.insert(std::move(owned));
    const auto output = [&] { return b.run("11XXXXXXXXXXXX")[2]; };
    EXPECT_EQ(output(), 'H');
    b.device.setvcc(5000);
    b.device.vccpin(107, 1);
    EXPECT_FALSE(b.programmer.part_has_power());
    EXPECT_EQ(output(), 'H');
    b.device.gndpin(1, 1);
    EXPECT_TRUE(b.programmer.part_has_power());
    EXPECT_EQ(output(), 'L');
    EXPECT_EQ(part.power_ups, 1);
    b.device.gndpin(1, 0);
    EXPECT_EQ(output(), 'H');
    b.device.gndpin(1, 1);
    EXPECT_EQ(part.power_ups, 2);
    b.device.setvcc(0);
    EXPECT_EQ(output(), 'H');
    b.device.setvcc(3000);
    EXPECT_EQ(part.power_ups, 3);
    b.device.vccpin(107, 0);
    EXPECT_EQ(output(), 'H');
}

TEST(socket, drivers_at_the_wrong_contacts_do_not_supply_a_part)
{
    bench b{40};
    b.programmer.insert(std::make_unique<quad_nand>());
    b.power(2, 107, 1);
    EXPECT_FALSE(b.programmer.part_has_power());
    b.power(2, 107, 0);
    b.power(1, 108, 1);
    EXPECT_FALSE(b.programmer.part_has_power());
    b.power(0, 0, 1);
    b.power(255, 99, 1);
    EXPECT_FALSE(b.programmer.part_has_power());
}

TEST(socket, a_reset_takes_the_supply_away_and_releases_all_pins)
{
    bench b{40};
    b.programmer.insert(std::make_unique<quad_nand>());
    b.power(1, 107, 1);
    b.drive("00X00X00X00X00");
    EXPECT_EQ(b.device.hwreset(), 0);
    EXPECT_FALSE(b.programmer.part_has_power());
    EXPECT_EQ(b.read(14, false), "HHHHHHHHHHHHHH");
}

TEST(socket, an_edge_reaches_a_part_once)
{
    bench b{40};
    b.programmer.insert(std::make_unique<toggle>());
    b.power(1, 104, 1);
    EXPECT_EQ(b.run("0XXXXXXX")[1], 'L');
    EXPECT_EQ(b.run("1XXXXXXX")[1], 'H');
    EXPECT_EQ(b.run("1XXXXXXX", false)[1], 'H');
    EXPECT_EQ(b.run("0XXXXXXX")[1], 'H');
    EXPECT_EQ(b.run("1XXXXXXX", false)[1], 'L');
}

TEST(socket, an_oscillating_part_ends_with_one_note)
{
    bench b{40};
    b.programmer.insert(std::make_unique<oscillator>());
    b.run("XXXXXXXX");
    EXPECT_EQ(b.notes(), std::vector<std::string>{"the part oscillates"});
    b.drive("0XXXXXXX");  // held low, it does not count
    b.drive("XXXXXXXX");
    EXPECT_EQ(b.notes().size(), 2u);
}

TEST(socket, a_test_board_joins_each_pin_with_the_one_opposite)
{
    for (const int model : {40, 23}) {
        bench b{model};
        const std::size_t pins = b.forty() ? 40 : 48;
        b.programmer.insert(std::make_unique<sim::test_board>(static_cast<int>(pins)));
        for (std::size_t pin = 0; pin < pins; ++pin) {
            std::string row(pins, 'X'), expected(pins, 'H');
            row[pin] = '0';
            expected[pin] = expected[pins - 1 - pin] = 'L';
            EXPECT_EQ(b.run(row), expected) << pin;
        }
        b.programmer.add_fault("pin 3 open");
        std::string row(pins, 'X'), expected(pins, 'H');
        row[2] = '0';
        expected[2] = 'L';
        EXPECT_EQ(b.run(row), expected);
    }
}

}  // namespace
}  // namespace tamrix::tests
