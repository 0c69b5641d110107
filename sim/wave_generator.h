// The square-wave generator of a programmer: the frequency that its output loop makes of a divider.
#pragma once

#include <cstdint>

namespace tamrix::sim {

struct wave_divider {
    std::uint8_t low = 0, middle = 0, high = 0;
    bool operator==(const wave_divider&) const = default;
};

/// Which loop turns the pin.
enum class wave_loop : std::uint8_t {
    registers,  // of programmers that are reached by registers
    usb,        // of those on USB
    timer       // from model 40 on: a timer in place of a loop
};

/// The one that a model uses; `by_registers`: that the upper bytes came by registers.
wave_loop loop_of(int model, bool by_registers);

/// In hertz; 0 where nothing comes out. `generation` 17 has other clocks on some models.
double generated_hertz(wave_loop loop, int model, int generation, wave_divider divider);

}  // namespace tamrix::sim
