// What a programmer model is: one record a model number. Nothing else in the library compares model numbers.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace tamrix::hw {

/// How fast the analyzer samples over USB.
enum class sampling : std::uint8_t {
    by_generation,  // 3.5 us on generation 17, 3.8 us on others
    slow,           // 4.7 us
    common,         // 3.4 us
};

/// How the signal generator makes its square wave.
enum class output_loop : std::uint8_t {
    by_generation,  // a loop over USB at 33 MHz on generation 17, at 28.636 MHz on others
    fast,           // a loop over USB at 33 MHz
    slow,           // a loop over USB at 24 MHz
    fixed_set,      // by a divider of the hertz themselves, on both routes; a fixed set of frequencies above 49 kHz
};

/// The loop of a model number, whether it has a record or not.
constexpr output_loop output_loop_of(std::int16_t number)
{
    if (number >= 40) return output_loop::fixed_set;
    if (number < 5) return output_loop::by_generation;
    return number == 9 || number == 10 || number == 13 || number == 14 ? output_loop::fast : output_loop::slow;
}

struct model {
    std::int16_t number;
    std::uint8_t vector_positions = 48;           // of the socket as vectors reach it; 40 are wired across
    bool newer_library = false;                   // the vector library of newer programmers
    bool vpp_feeds_107 = false;                   // VCC at driver 107 comes through VPP driver 108
    bool vpp_feeds_108 = false;                   // VCC at driver 108 comes through VPP driver 108
    bool scripts_end_vpp_feed = false;            // a script also ends through the VPP driver by which it began
    bool selects_two_boards = false;              // selects boards by two codes, boardsel2, and not by boardsel
    bool selects_board_for_calibration = false;   // does so before a voltage calibration too
    bool adaptor_note = false;                    // a device note may ask for the external supply
    bool pin_map_before_logic_test = false;       // shows the pin map first
    std::string_view self_test_form = "pinnote";  // the dialog of the self-test
    sampling after_capture = sampling::common;    // the sample period once a capture has been made
    sampling before_capture = sampling::common;   // the one that the analyzer begins with
    output_loop generator = output_loop_of(number);
    bool selects_board_for_wave = number >= 40;  // frequency meter (over USB) and signal generator select board 0
};

/// A number that has no record of its own.
constexpr model model_by_rule(std::int16_t number)
{
    return {.number = number,
            .newer_library = number >= 30,
            .selects_two_boards = number >= 40,
            .selects_board_for_calibration = number > 40};
}

/// A programmer with 40 positions whose VPP driver 108 feeds both supply places at the tied position.
constexpr model small_socket_model(std::int16_t number)
{
    return {.number = number,
            .vector_positions = 40,
            .vpp_feeds_107 = true,
            .vpp_feeds_108 = true,
            .scripts_end_vpp_feed = true,
            .adaptor_note = true,
            .pin_map_before_logic_test = true,
            .self_test_form = "pinnote4"};
}

/// A programmer of four modules in one unit.
constexpr model module_model(std::int16_t number)
{
    model made = model_by_rule(number);
    made.self_test_form = "pinnote204";
    return made;
}

constexpr model in_system_model(std::int16_t number) { return {.number = number, .self_test_form = "pinnoteISP"}; }

constexpr model sampling_model(std::int16_t number, sampling period)
{
    return {.number = number, .after_capture = period, .before_capture = period};
}

/// The models that differ from the rule, by number.
inline constexpr std::array listed_models{
    sampling_model(2, sampling::by_generation),
    sampling_model(3, sampling::by_generation),
    // Intentional: the two periods of this model differ.
    model{.number = 4, .after_capture = sampling::by_generation, .before_capture = sampling::common},
    sampling_model(5, sampling::slow),
    sampling_model(6, sampling::slow),
    sampling_model(7, sampling::slow),
    sampling_model(8, sampling::slow),
    sampling_model(9, sampling::by_generation),
    sampling_model(10, sampling::by_generation),
    in_system_model(11),
    in_system_model(12),
    sampling_model(13, sampling::by_generation),
    sampling_model(14, sampling::by_generation),
    model{.number = 15, .vpp_feeds_108 = true, .after_capture = sampling::slow, .before_capture = sampling::slow},
    model{.number = 16, .vpp_feeds_108 = true, .after_capture = sampling::slow, .before_capture = sampling::slow},
    sampling_model(17, sampling::slow),
    sampling_model(18, sampling::slow),
    sampling_model(19, sampling::slow),
    model{.number = 22, .vector_positions = 40},
    small_socket_model(23),
    small_socket_model(24),
    in_system_model(25),
    in_system_model(26),
    model{.number = 27, .self_test_form = "pinnote_sepm"},
    small_socket_model(28),
    small_socket_model(29),
    module_model(39),
    module_model(52),
    module_model(54),
};

/// The record of a model number, whatever the number is.
constexpr model model_of(std::int16_t number)
{
    const auto listed = std::ranges::find(listed_models, number, &model::number);
    return listed != listed_models.end() ? *listed : model_by_rule(number);
}

}  // namespace tamrix::hw
