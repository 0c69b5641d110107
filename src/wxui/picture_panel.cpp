#include "wxui/picture_panel.h"

#include "wxui/text.h"

#include <algorithm>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>

namespace tamrix::wxui {

namespace {

constexpr double twips_per_pixel = 15;  // at 96 dots to the inch

wxColour to_wx_colour(forms::colour colour)
{
    return {static_cast<unsigned char>(colour >> 16), static_cast<unsigned char>(colour >> 8),
            static_cast<unsigned char>(colour)};
}

}  // namespace

dc_canvas::dc_canvas(wxDC& target, double pixels_per_twip, wxSize size) : dc_canvas{target, pixels_per_twip}
{
    merger_.emplace(size.x, size.y, [this](const forms::line_merger::bar& one) { draw(one); });
}

dc_canvas::~dc_canvas() { flush(); }

void dc_canvas::flush()
{
    if (merger_) merger_->flush();
    if (ink_) smooth(true);
    ink_.reset();
}

/// Smoothed ends would give lines that touch other colours where they are drawn one by one.
void dc_canvas::smooth(bool on)
{
    if (wxGraphicsContext* const context = target_.GetGraphicsContext())
        context->SetAntialiasMode(on ? wxANTIALIAS_DEFAULT : wxANTIALIAS_NONE);
}

void dc_canvas::draw(const forms::line_merger::bar& one)
{
    if (!ink_) smooth(false);
    if (ink_ != one.ink) {
        target_.SetPen(pen(one.ink));
        target_.SetBrush(wxBrush{to_wx_colour(one.ink)});
        ink_ = one.ink;
    }
    const wxPoint first{one.first.x, one.first.y}, last{one.last.x, one.last.y};
    if (first == last) {
        target_.DrawPoint(first);
    } else if (first.x == last.x || first.y == last.y) {
        target_.DrawLine(first, last);
    } else {
        target_.DrawRectangle(wxRect{first, last});
    }
}

wxPoint dc_canvas::pixels(forms::point at) const
{
    return {forms::nearest_pixel(at.x * scale_), forms::nearest_pixel(at.y * scale_)};
}

void dc_canvas::clear(forms::colour background)
{
    flush();
    target_.SetBackground(to_wx_colour(background));
    target_.Clear();
}

void dc_canvas::line(forms::point from, forms::point to, forms::colour ink)
{
    const wxPoint first = pixels(from), last = pixels(to);
    if (merger_ && merger_->add({first.x, first.y}, {last.x, last.y}, ink)) return;
    flush();
    target_.SetPen(pen(ink));
    target_.DrawLine(first, last);
}

/// A line is one pixel of the screen wide, and as wide on paper.
wxPen dc_canvas::pen(forms::colour ink) const
{
    return {to_wx_colour(ink), std::max(1, wxRound(twips_per_pixel * scale_))};
}

void dc_canvas::figure(forms::outline kind, const forms::area& place, std::optional<forms::colour> fill,
                       forms::colour border)
{
    flush();
    target_.SetPen(pen(border));
    target_.SetBrush(fill ? wxBrush{to_wx_colour(*fill)} : *wxTRANSPARENT_BRUSH);
    const wxPoint first = pixels({place.left, place.top});
    const wxPoint last = pixels({place.left + place.width, place.top + place.height});
    const wxRect inside{first, wxSize{last.x - first.x, last.y - first.y}};
    if (kind == forms::outline::ellipse) {
        target_.DrawEllipse(inside);
    } else {
        target_.DrawRectangle(inside);
    }
}

void dc_canvas::text(forms::point at, std::string_view words, forms::colour ink)
{
    flush();
    target_.SetTextForeground(to_wx_colour(ink));
    target_.DrawText(to_wx(words), pixels(at));
}

picture_panel::picture_panel(wxWindow* parent, forms::picture& shown, callback_guard& guard)
    : wxWindow{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_THEME}, shown_{shown}
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetMinClientSize(least_size());
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_LEFT_DOWN,
         [this, &guard](wxMouseEvent& event) { guard([&] { shown_.press(twips(event.GetPosition())); }); });
    Bind(wxEVT_MOUSEWHEEL, [this, &guard](wxMouseEvent& event) { guard([&] { turn_wheel(event); }); });
    Bind(wxEVT_SIZE, [this, &guard](wxSizeEvent& event) {
        event.Skip();
        const wxSize size = GetClientSize();
        guard([&] { shown_.resize(twips({size.x, size.y})); });
        Refresh(false);
    });
}

wxSize picture_panel::least_size() const
{
    const forms::point extent = shown_.extent;
    return {wxRound(extent.x * pixels_per_twip()), wxRound(extent.y * pixels_per_twip())};
}

forms::point picture_panel::twips(wxPoint pixels) const
{
    const auto scaled = [this](int length) { return wxRound(length / pixels_per_twip()); };
    return {scaled(pixels.x), scaled(pixels.y)};
}

double picture_panel::pixels_per_twip() const { return GetDPIScaleFactor() / twips_per_pixel; }

/// A fine wheel sends parts of a step, which add up.
void picture_panel::turn_wheel(const wxMouseEvent& event)
{
    wheel_turned_ += event.GetWheelRotation();
    const int steps = wheel_turned_ / std::max(1, event.GetWheelDelta());
    wheel_turned_ -= steps * event.GetWheelDelta();
    if (steps != 0) shown_.turn_wheel(steps);
}

void picture_panel::paint()
{
    wxAutoBufferedPaintDC dc{this};
    dc.SetFont(GetFont());
    dc_canvas target{dc, pixels_per_twip(), GetClientSize()};
    shown_.draw_on(target);
}

}  // namespace tamrix::wxui
