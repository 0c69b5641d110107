// Pictures on the screen: a canvas on a device context, and the window that shows a form's picture.
#pragma once

#include "forms/line_merger.h"
#include "wxui/callback_guard.h"

#include <optional>
#include <string_view>

#include <wx/dc.h>
#include <wx/window.h>

namespace tamrix::wxui {

/// Draws on `target`; `pixels_per_twip` is its scale.
class dc_canvas final : public forms::canvas {
public:
    dc_canvas(wxDC& target, double pixels_per_twip) : target_{target}, scale_{pixels_per_twip} {}
    /// One for a screen of `size` pixels, which draws lines that fall on the same pixels once.
    dc_canvas(wxDC& target, double pixels_per_twip, wxSize size);
    ~dc_canvas() override;
    dc_canvas(const dc_canvas&) = delete;
    dc_canvas& operator=(const dc_canvas&) = delete;

    void clear(forms::colour background) override;
    void line(forms::point from, forms::point to, forms::colour ink) override;
    void text(forms::point at, std::string_view words, forms::colour ink) override;
    void figure(forms::outline kind, const forms::area& place, std::optional<forms::colour> fill,
                forms::colour border) override;

private:
    wxPoint pixels(forms::point at) const;
    wxPen pen(forms::colour ink) const;
    void draw(const forms::line_merger::bar& one);
    void flush();
    void smooth(bool on);

    wxDC& target_;
    double scale_;
    std::optional<forms::line_merger> merger_;
    std::optional<forms::colour> ink_;  // of the pen and the brush for merged lines
};

/// Repaints the whole picture on a buffer, so that it does not flicker, and hands presses and its size on in twips.
class picture_panel final : public wxWindow {
public:
    picture_panel(wxWindow* parent, forms::picture& shown, callback_guard& guard);

    /// The smallest size that shows the whole picture.
    wxSize least_size() const;
    bool AcceptsFocus() const override { return false; }

private:
    double pixels_per_twip() const;
    forms::point twips(wxPoint pixels) const;
    void turn_wheel(const wxMouseEvent& event);
    void paint();

    forms::picture& shown_;
    int wheel_turned_ = 0;  // since the last whole step
};

}  // namespace tamrix::wxui
