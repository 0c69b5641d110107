// What pictures are drawn through. The same calls reach a window, a printer page and a test's list.
#pragma once

#include "forms/control.h"

#include <cstdint>
#include <functional>
#include <optional>
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

/// The place and size of a figure, in twips.
struct area {
    int left = 0, top = 0, width = 0, height = 0;
    bool operator==(const area&) const = default;
};

/// What fills its area: an ellipse touches the middle of each side.
enum class outline : std::uint8_t { rectangle, ellipse };

class canvas {
public:
    virtual ~canvas() = default;
    virtual void clear(colour background) = 0;
    virtual void line(point from, point to, colour ink) = 0;
    /// `at` is the upper left corner of the text, UTF-8.
    virtual void text(point at, std::string_view words, colour ink) = 0;
    /// Without `fill` the inside of the border is transparent.
    virtual void figure(outline kind, const area& place, std::optional<colour> fill, colour border) = 0;
};

class shape;

/// A surface of a form. It keeps what was drawn since it was cleared, so that it can be drawn again on any canvas.
class picture final : public control, public canvas {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<colour> background{*this, 0xFFFFFF};
    /// The lower right corner of what the form draws; a renderer gives the picture at least that much room.
    property<point> extent{*this};
    std::function<void(point)> on_press;
    /// The person turns the wheel over the picture by so many steps; more than 0 is away from the person.
    std::function<void(int steps)> on_wheel;
    /// Raised after the size has changed.
    std::function<void()> on_resize;

    /// Its width and height in twips: those on the screen, or `extent` before it was shown.
    point size() const { return size_.value_or(extent()); }

    void clear(colour background_colour) override;
    void line(point from, point to, colour ink) override;
    void text(point at, std::string_view words, colour ink) override;
    void figure(outline kind, const area& place, std::optional<colour> fill, colour border) override;
    /// Calls `drawing` and notifies the renderer once, after it, of everything it drew. What `drawing` throws comes
    /// out.
    void draw(const std::function<void()>& drawing);
    /// Repeats the drawing on `target`, with the shapes that lie on it.
    void draw_on(canvas& target) const;

    /// The person presses the picture, in twips from its upper left corner.
    void press(point where);
    /// The person turns the wheel.
    void turn_wheel(int steps);
    /// The renderer reports the picture's size on the screen, in twips.
    void resize(point size);
    void changed() override;

private:
    friend class shape;

    /// One call, kept as data: an instrument draws a hundred thousand lines.
    struct stroke {
        enum class kind : std::uint8_t { line, text, figure } what;
        outline form = outline::rectangle;
        bool filled = false;
        point from, to;  // of a figure: its corner, then its width and height
        colour ink, fill = 0;
        std::uint32_t words = 0;  // the place in `texts_`
    };

    std::vector<stroke> strokes_;
    std::vector<std::string> texts_;
    std::vector<const shape*> shapes_;
    std::optional<point> size_;
    int drawings_ = 0;    // that run now
    bool other_ = false;  // than what the renderer knows
};

}  // namespace tamrix::forms
