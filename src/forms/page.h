// A page to print on.
#pragma once

#include "forms/canvas.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tamrix::forms {

/// A line of text is 240 twips high.
class page : public canvas {
public:
    /// Its width and height in twips. What is drawn outside is lost.
    virtual point size() const = 0;
};

struct print_job {
    std::string title{};  // in the printer's queue, and of the preview
    /// Of the buttons of the preview.
    struct preview_captions {
        std::string print{"Print"}, zoom_in{"Zoom In"}, zoom_out{"Zoom Out"}, leave{"Cancel"};
    };
    preview_captions captions{};
    /// Draws the page; may be called more than once.
    std::function<void(page&)> draw{};
};

enum class print_end : std::uint8_t {
    printed,
    cancelled,  // by the person
    failed,     // the printer refused it
};

}  // namespace tamrix::forms
