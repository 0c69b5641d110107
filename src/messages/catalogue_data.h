// The message texts as the build makes them from the language files.
#pragma once

#include <span>
#include <string_view>

namespace tamrix::catalogue_data {

/// `base` is the number inside a language block; numbers ascend.
struct message {
    int base;
    std::string_view text;  // UTF-8
};

struct language_block {
    int offset;
    std::span<const message> texts;
    std::span<const std::string_view> answers;  // in the order of forms::answer
    std::span<const std::string_view> hints;    // in the order of hint
};

std::span<const language_block> blocks();

}  // namespace tamrix::catalogue_data
