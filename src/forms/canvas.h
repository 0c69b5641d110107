// What pictures are drawn through. The same calls reach a window, a printer page and a test's list.
#pragma once

#include "forms/control.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::forms {

/// 0xRRGGBB.
using colour = std::uint32_t;

/// A point in twips (1440 to the inch), from the left and the top edge.
struct point {
    int x = 0, y = 0;
    bool operator==(const point&) const = default;
};

class canvas {
public:
    virtual ~canvas() = default;
    virtual void clear(colour background) = 0;
    virtual void line(point from, point to, colour ink) = 0;
    /// `at` is the upper left corner of the text, UTF-8.
    virtual void text(point at, std::string_view words, colour ink) = 0;
};

/// A surface of a form. It keeps what was drawn since it was cleared, so that it can be drawn again on any canvas.
class picture final : public control, public canvas {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<colour> background{*this, 0xFFFFFF};
    /// The lower right corner of what the form draws; a renderer gives the picture at least that much room.
    property<point> extent{*this};
    std::function<void(point)> on_press;

    void clear(colour background_colour) override;
    void line(point from, point to, colour ink) override;
    void text(point at, std::string_view words, colour ink) override;
    /// Repeats the drawing on `target`.
    void draw_on(canvas& target) const;

    void press(point where);

private:
    struct stroke {
        point from, to;
        std::string words;  // a text where not empty
        colour ink;
    };
    std::vector<stroke> strokes_;
};

}  // namespace tamrix::forms
