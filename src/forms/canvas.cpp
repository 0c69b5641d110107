#include "forms/canvas.h"

#include "forms/shape.h"

namespace tamrix::forms {

void picture::clear(colour background_colour)
{
    draw([&] {
        strokes_.clear();
        background = background_colour;
        changed();
    });
}

void picture::line(point from, point to, colour ink)
{
    strokes_.push_back([=](canvas& target) { target.line(from, to, ink); });
    changed();
}

void picture::text(point at, std::string_view words, colour ink)
{
    if (words.empty()) return;
    strokes_.push_back([at, kept = std::string{words}, ink](canvas& target) { target.text(at, kept, ink); });
    changed();
}

void picture::figure(outline kind, const area& place, std::optional<colour> fill, colour border)
{
    strokes_.push_back([=](canvas& target) { target.figure(kind, place, fill, border); });
    changed();
}

void picture::draw(const std::function<void()>& drawing)
{
    struct at_end {
        picture& drawn;
        ~at_end()
        {
            if (--drawn.drawings_ == 0 && std::exchange(drawn.other_, false)) drawn.control::changed();
        }
    };
    ++drawings_;
    const at_end tell{*this};
    drawing();
}

void picture::draw_on(canvas& target) const
{
    target.clear(background());
    for (const auto& stroke : strokes_) stroke(target);
    for (const shape* one : shapes_) one->draw_on(target);
}

void picture::press(point where)
{
    if (usable() && on_press) on_press(where);
}

void picture::turn_wheel(int steps)
{
    if (usable()) raise(on_wheel, steps);
}

void picture::resize(point size)
{
    const bool other = size != this->size();
    size_ = size;
    if (other) raise(on_resize);
}

void picture::changed()
{
    if (drawings_ > 0) {
        other_ = true;
    } else {
        control::changed();
    }
}

}  // namespace tamrix::forms
