// What a model takes part in, as far as the self-test asks. With channel/model.h the only place that compares model
// numbers.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace tamrix {

/// The pins whose drivers a stage switches, in order; pin 1 is lamp 0. Which further pins the hardware has a driver at
/// is not known for every model: those are not switched, and count as not tested.
struct driver_pins {
    std::span<const std::uint8_t> pins{};
    int unknown = 0;

    bool takes_part() const { return !pins.empty() || unknown > 0; }
};

namespace driver_lists {

inline constexpr auto whole_socket = [] {
    std::array<std::uint8_t, 48> all{};
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i + 1);
    return all;
}();

// Programmers with one VPP generator.
inline constexpr std::uint8_t few_ground[] = {13, 14, 17, 18, 19, 20, 21, 23, 24, 26, 27, 28, 30, 31, 33, 34};
inline constexpr std::uint8_t few_vcc[] = {11, 13, 15, 16, 17, 20, 24, 25, 26, 27, 28,
                                           29, 30, 33, 34, 35, 36, 37, 39, 43, 45};
inline constexpr std::uint8_t few_vpp[] = {4, 8, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 23, 31, 32, 33, 34, 37, 38};

}  // namespace driver_lists

struct selftest_model {
    std::int16_t number = 0;
    bool single_vpp = false;         // calibrates one VPP generator, at other pins and voltages
    bool large_ram = false;          // tests 16 blocks of RAM; else 4
    bool boards_of_gates = true;     // tests the registers of its function boards
    bool whole_side_output = false;  // its Output Test sweeps a whole side at once, and not the outermost pins apart
    driver_pins ground{}, vcc{}, vpp{};
    // The last function board whose registers are tested.
    std::uint8_t last_board_by_usb = 0, last_board_by_registers = 0;
    bool has_boards_3_and_4 = true;
};

/// Models from 40 on.
constexpr selftest_model newer_selftest_model(std::int16_t number)
{
    return {.number = number,
            .large_ram = true,
            .boards_of_gates = false,
            .whole_side_output = true,
            .ground = {.pins = driver_lists::whole_socket},
            .vcc = {.pins = driver_lists::whole_socket},
            .vpp = {.pins = driver_lists::whole_socket}};
}

constexpr selftest_model boards_model(std::int16_t number, std::uint8_t last_board, bool has_boards_3_and_4)
{
    return {.number = number,
            .last_board_by_usb = last_board,
            .last_board_by_registers = last_board,
            .has_boards_3_and_4 = has_boards_3_and_4};
}

/// With a driver of each kind at every pin.
constexpr selftest_model full_driver_model(std::int16_t number)
{
    selftest_model made = boards_model(number, 16, true);
    made.ground.pins = made.vcc.pins = made.vpp.pins = driver_lists::whole_socket;
    return made;
}

constexpr selftest_model few_driver_model(std::int16_t number)
{
    selftest_model made = boards_model(number, 7, true);
    made.single_vpp = true;
    made.ground.pins = driver_lists::few_ground;
    made.vcc.pins = driver_lists::few_vcc;
    made.vpp.pins = driver_lists::few_vpp;
    return made;
}

/// The newer ones of the same kind: three VCC pins more, and 16 VPP pins of which none is known.
constexpr selftest_model newer_few_driver_model(std::int16_t number)
{
    selftest_model made = newer_selftest_model(number);
    made.single_vpp = true;
    made.ground.pins = driver_lists::few_ground;
    made.vcc = {.pins = driver_lists::few_vcc, .unknown = 3};
    made.vpp = {.pins = {}, .unknown = 16};
    return made;
}

/// With a 40-pin socket. The hardware has so many drivers; none of their pins is known.
constexpr selftest_model forty_pin_model(std::int16_t number)
{
    selftest_model made = boards_model(number, 0, true);
    made.ground.unknown = 11;
    made.vcc.unknown = 13;
    made.vpp.unknown = 16;
    return made;
}

/// With a 40-pin socket and VCC alone to calibrate; neither the pins of its drivers nor their counts are known.
constexpr selftest_model low_voltage_model(std::int16_t number)
{
    selftest_model made = boards_model(number, 0, true);
    made.ground.unknown = made.vcc.unknown = made.vpp.unknown = 40;
    return made;
}

/// Intentional: this model tests two boards more by USB.
constexpr selftest_model model_2()
{
    selftest_model made = boards_model(2, 16, false);
    made.last_board_by_registers = 14;
    return made;
}

inline constexpr std::array listed_selftest_models{
    boards_model(0, 16, false), boards_model(1, 14, false), model_2(),
    boards_model(3, 16, false), boards_model(4, 16, false), boards_model(5, 7, false),
    boards_model(6, 7, false),  boards_model(7, 7, false),  boards_model(8, 7, false),
    full_driver_model(9),       full_driver_model(10),      full_driver_model(13),
    full_driver_model(14),      few_driver_model(15),       few_driver_model(16),
    boards_model(17, 7, true),  boards_model(18, 7, true),  forty_pin_model(23),
    forty_pin_model(24),        low_voltage_model(27),      forty_pin_model(28),
    forty_pin_model(29),        newer_few_driver_model(57), newer_few_driver_model(58),
};

/// Whatever the number is.
constexpr selftest_model selftest_model_of(std::int16_t number)
{
    const auto* const listed = std::ranges::find(listed_selftest_models, number, &selftest_model::number);
    if (listed != listed_selftest_models.end()) return *listed;
    return number >= 40 ? newer_selftest_model(number) : boards_model(number, 0, number >= 9);
}

}  // namespace tamrix
