#include "wxui/progress_panel.h"

#include <algorithm>
#include <memory>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/settings.h>

namespace tamrix::wxui {

progress_panel::progress_panel(wxWindow* parent) : wxWindow{parent, wxID_ANY}
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
}

wxSize progress_panel::DoGetBestClientSize() const { return FromDIP(wxSize{120, 8}); }

int progress_panel::filled_pixels() const { return wxRound(GetClientSize().x * percent_ / 100); }

void progress_panel::show(double percent)
{
    const int before = filled_pixels();
    percent_ = std::clamp(percent, 0.0, 100.0);
    if (filled_pixels() == before) return;
    Refresh(false);
    Update();
}

void progress_panel::paint()
{
    wxAutoBufferedPaintDC dc{this};
    dc.SetBackground(GetParent()->GetBackgroundColour());
    dc.Clear();
    const std::unique_ptr<wxGraphicsContext> pen{wxGraphicsContext::Create(dc)};
    const wxSize size = GetClientSize();
    const double round = size.y / 2.0;
    const wxColour ground = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);
    pen->SetBrush(wxColour{ground.Red(), ground.Green(), ground.Blue(), 40});
    pen->DrawRoundedRectangle(0, 0, size.x, size.y, round);
    if (filled_pixels() == 0) return;
    pen->SetBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT));
    pen->DrawRoundedRectangle(0, 0, std::max(filled_pixels(), size.y), size.y, round);
}

}  // namespace tamrix::wxui
