#include "forms/canvas.h"

#include "forms/shape.h"

namespace tamrix::forms {

void picture::clear(colour background_colour)
{
    draw([&] {
        strokes_.clear();
        texts_.clear();
        background = background_colour;
        changed();
    });
}

void picture::line(point from, point to, colour ink)
{
    strokes_.push_back({.what = stroke::kind::line, .from = from, .to = to, .ink = ink});
    changed();
}

void picture::text(point at, std::string_view words, colour ink)
{
    if (words.empty()) return;
    strokes_.push_back({.what = stroke::kind::text,
                        .from = at,
                        .to = at,
                        .ink = ink,
                        .words = static_cast<std::uint32_t>(texts_.size())});
    texts_.emplace_back(words);
    changed();
}

void picture::figure(outline kind, const area& place, std::optional<colour> fill, colour border)
{
    strokes_.push_back({.what = stroke::kind::figure,
                        .form = kind,
                        .filled = fill.has_value(),
                        .from = {place.left, place.top},
                        .to = {place.width, place.height},
                        .ink = border,
                        .fill = fill.value_or(0)});
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
    for (const stroke& one : strokes_) {
        switch (one.what) {
        case stroke::kind::line: target.line(one.from, one.to, one.ink); break;
        case stroke::kind::text: target.text(one.from, texts_[one.words], one.ink); break;
        case stroke::kind::figure:
            target.figure(one.form, {one.from.x, one.from.y, one.to.x, one.to.y},
                          one.filled ? std::optional{one.fill} : std::nullopt, one.ink);
        }
    }
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
