#include "forms/canvas.h"

namespace tamrix::forms {

void picture::clear(colour background_colour)
{
    strokes_.clear();
    background = background_colour;
    changed();
}

void picture::line(point from, point to, colour ink)
{
    strokes_.push_back({from, to, {}, ink});
    changed();
}

void picture::text(point at, std::string_view words, colour ink)
{
    if (words.empty()) return;
    strokes_.push_back({at, at, std::string{words}, ink});
    changed();
}

void picture::draw_on(canvas& target) const
{
    target.clear(background());
    for (const stroke& s : strokes_) {
        if (s.words.empty()) {
            target.line(s.from, s.to, s.ink);
        } else {
            target.text(s.from, s.words, s.ink);
        }
    }
}

void picture::press(point where)
{
    if (usable() && on_press) on_press(where);
}

}  // namespace tamrix::forms
