// The kinds of signals, read from text.
#pragma once

#include "sim/signals/clocked_chip.h"
#include "sim/signals/signal_words.h"

#include <memory>
#include <span>

namespace tamrix::sim {

/// What follows the pins: "square 1000 duty 25". `pins` are masks of one pin each, in the order of the text.
/// Throws signal_error.
std::shared_ptr<const signal> read_signal(std::span<const std::uint8_t> pins, signal_words& words);

/// What follows "chip": "7490 14=P21 1=12 2=low". Throws signal_error.
chip_plan read_chip(signal_words& words, const part_shelf& chips);

}  // namespace tamrix::sim
