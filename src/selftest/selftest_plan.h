// A self-test form as data: its options, what each calibrates and which lamps show it.
#pragma once

#include "forms/canvas.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace tamrix {

enum class option_action : std::uint8_t { system_test, calibration, output_test };
enum class generator : std::uint8_t { vcc, vpp0, vpp1 };

/// A voltage that stays on until Stop, and the lamps of its two pins.
struct calibration_plan {
    generator supply = generator::vcc;
    std::int32_t millivolts = 0;
    std::uint8_t driver = 0;  // the pin code of vccpin or vpppin
    int lamp = 0;
    forms::colour ink = 0;
    int ground_lamp = 23;
};

struct option_plan {
    option_action does = option_action::system_test;
    // The caption is these three together.
    std::string_view before{};
    int message = 0;
    std::string_view after{};
    calibration_plan calibration{};  // of a calibration
    bool adaptor_note = false;       // asks for the external supply
    bool offered = true;             // else it is listed but cannot be chosen
};

using selftest_plan = std::span<const option_plan>;

}  // namespace tamrix
