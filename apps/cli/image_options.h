// What is done with an image between its files and its use: the options of `convert`, `compare` and `dump`.
#pragma once

#include "cli/image_input.h"

#include <cstdint>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tamrix::cli {

/// As typed; none for an option that was not given.
struct image_words {
    std::optional<std::string> crop, offset, fill, swap, overlap;
    bool accept_damage = false, fill_gaps = false;
};

struct image_options {
    std::optional<memory_segment> crop{};
    std::int64_t offset = 0;
    std::optional<std::uint8_t> fill{};
    int swap = 0;  // bytes of a group; 0 for none
    overlap_rule overlap = overlap_rule::refuse;
    bool accept_damage = false;
    bool fill_gaps = false;  // however long they are
};

void add_image_options(CLI::App& command, image_words& words);
/// Throws command_error.
image_options check(const image_words& words);

/// Crops, swaps and moves, in this order. Throws command_error where nothing is left or an address leaves the image.
void apply(const image_options& options, memory_image& image);

}  // namespace tamrix::cli
