#include "tested_model.h"

#include <numeric>

namespace tamrix::tests {

namespace {

/// `line_of` a pin from 1, and the pin that a test names at that line.
template <class LineOf, class PinTold>
constexpr socket_of_pins made_socket(int pins, LineOf line_of, PinTold told)
{
    socket_of_pins made{.pins = pins};
    for (int pin = 1; pin <= pins; ++pin) {
        const int line = line_of(pin), place = place_of_line(line);
        made.place[static_cast<std::size_t>(pin)] = place;
        made.told[static_cast<std::size_t>(place)] = told(line);
        made.wired |= place_set(place);
    }
    return made;
}

constexpr socket_of_pins socket_of_48 = made_socket(
    48, [](int pin) { return pin - 1; }, [](int line) { return line + 1; });
/// The innermost lines of the larger one.
constexpr socket_of_pins socket_of_40 = made_socket(
    40, [](int pin) { return pin + 3; }, [](int line) { return line - 3; });

/// Pin 1 is lamp 4; the entries are the lamps of the lines 4 to 43.
constexpr int lamps_of_reordered_lines[] = {4,  5,  6,  7,  9,  37, 8,  38, 34, 33, 30, 32, 19, 18,
                                            17, 16, 20, 21, 22, 24, 25, 26, 27, 28, 15, 14, 13, 12,
                                            11, 35, 36, 10, 29, 31, 39, 23, 43, 42, 41, 40};
constexpr int pin_told_at_reordered(int line) { return lamps_of_reordered_lines[line - 4] - 3; }
/// The four uppermost pins of the right column are wired the other way round than the dialog says.
constexpr int first_swapped_pin = 37;
constexpr int reordered_line_of(int pin)
{
    if (pin >= first_swapped_pin) return pin + 3;
    int line = 4;
    while (pin_told_at_reordered(line) != pin) ++line;
    return line;
}
constexpr socket_of_pins reordered_socket_of_40 = made_socket(40, reordered_line_of, pin_told_at_reordered);

constexpr auto all_pins = [] {
    std::array<int, most_pins> all{};
    std::iota(all.begin(), all.end(), 1);
    return all;
}();
constexpr int some_vpp[] = {4, 8, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 23, 31, 32, 33, 34, 37, 38};
constexpr int some_vcc[] = {11, 13, 15, 16, 17, 20, 24, 25, 26, 27, 28, 29, 30, 33, 34, 35, 36, 37, 39, 43, 45};

}  // namespace

tested_model tested_model_of(int model)
{
    switch (model) {
    case 1: return {.socket = socket_of_48, .last_board_usb = 14, .last_board_registers = 14, .boards_3_and_4 = false};
    case 2: return {.socket = socket_of_48, .last_board_usb = 16, .last_board_registers = 14, .boards_3_and_4 = false};
    case 9:
        return {
            .socket = socket_of_48, .vpp = all_pins, .vcc = all_pins, .last_board_usb = 16, .last_board_registers = 16};
    case 11:
    case 25: return {.socket = socket_of_48, .memory_alone = true};
    case 15:
        return {
            .socket = socket_of_48, .vpp = some_vpp, .vcc = some_vcc, .last_board_usb = 7, .last_board_registers = 7};
    case 23: return {.socket = reordered_socket_of_40, .banks = 1, .ports_only_low = true};
    case 27: return {.socket = socket_of_40, .last_board_usb = 0, .last_board_registers = 0, .banks = 2};
    case 39: return {.socket = socket_of_48, .vpp = all_pins, .vcc = all_pins, .banks = 16, .modules = 4};
    case 57: return {.socket = socket_of_48, .vcc = some_vcc, .banks = 16};
    default: return {.socket = socket_of_48, .vpp = all_pins, .vcc = all_pins, .banks = 16};
    }
}

}  // namespace tamrix::tests
