#include "wxui/picture_panel.h"

#include "wxui/text.h"

#include <wx/dcbuffer.h>

namespace tamrix::wxui {

namespace {

constexpr double twips_per_pixel = 15;  // at 96 dots to the inch

wxColour to_wx_colour(forms::colour colour)
{
    return {static_cast<unsigned char>(colour >> 16), static_cast<unsigned char>(colour >> 8),
            static_cast<unsigned char>(colour)};
}

}  // namespace

wxPoint dc_canvas::pixels(forms::point at) const { return {wxRound(at.x * scale_), wxRound(at.y * scale_)}; }

void dc_canvas::clear(forms::colour background)
{
    target_.SetBackground(to_wx_colour(background));
    target_.Clear();
}

void dc_canvas::line(forms::point from, forms::point to, forms::colour ink)
{
    target_.SetPen(to_wx_colour(ink));
    target_.DrawLine(pixels(from), pixels(to));
}

void dc_canvas::text(forms::point at, std::string_view words, forms::colour ink)
{
    target_.SetTextForeground(to_wx_colour(ink));
    target_.DrawText(to_wx(words), pixels(at));
}

picture_panel::picture_panel(wxWindow* parent, forms::picture& shown, callback_guard& guard)
    : wxWindow{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_THEME}, shown_{shown}
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetMinClientSize(least_size());
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_LEFT_DOWN, [this, &guard](wxMouseEvent& event) {
        const auto twips = [this](int pixels) { return wxRound(pixels / pixels_per_twip()); };
        const forms::point where{twips(event.GetX()), twips(event.GetY())};
        guard([&] { shown_.press(where); });
    });
}

wxSize picture_panel::least_size() const
{
    const forms::point extent = shown_.extent;
    return {wxRound(extent.x * pixels_per_twip()), wxRound(extent.y * pixels_per_twip())};
}

double picture_panel::pixels_per_twip() const { return GetDPIScaleFactor() / twips_per_pixel; }

void picture_panel::paint()
{
    wxAutoBufferedPaintDC dc{this};
    dc.SetFont(GetFont());
    dc_canvas target{dc, pixels_per_twip()};
    shown_.draw_on(target);
}

}  // namespace tamrix::wxui
